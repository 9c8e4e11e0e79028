# cmake -DPROGRAM=<tool> [-DEMULATOR=<command>] -DSOURCE=<catalogue of en-US texts>
#       -DEXPORTED=<its expected export to fr-FR> -DWORK=<scratch directory> -P RunXliffRoundTrip.cmake
# The export is the expected file byte for byte; with each target set to its
# source, the import writes the catalogue's texts byte for byte under fr-FR.
# An import of a file that is not XLIFF writes nothing, not even over an
# earlier output.
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/../ToolRuns.cmake)

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

run_tool(0 "" xliff export --from en-US --to fr-FR ${SOURCE} -o ${WORK}/fr.xlf)
# The export names its catalogue as given; the expected file names it from the source root.
file(READ ${WORK}/fr.xlf exported)
file(READ ${EXPORTED} expected)
string(REPLACE "original=\"${SOURCE}\"" "original=\"tests/tool/xliff/input/round-trip.xml\"" exported "${exported}")
if(NOT exported STREQUAL expected)
  message(FATAL_ERROR "${WORK}/fr.xlf is not ${EXPORTED}:\n${exported}")
endif()

string(REGEX REPLACE "<source>([^<]*)</source>" "<source>\\1</source><target>\\1</target>" translated "${exported}")
file(WRITE ${WORK}/translated.xlf "${translated}")
run_tool(0 "" xliff import ${WORK}/translated.xlf -o ${WORK}/fr.xml)
file(READ ${SOURCE} source)
string(REPLACE "Lang=\"en-US\"" "Lang=\"fr-FR\"" source "${source}")
file(WRITE ${WORK}/expected-fr.xml "${source}")
require_same(${WORK}/fr.xml ${WORK}/expected-fr.xml)

run_tool(2 "" xliff import ${SOURCE} -o ${WORK}/fr.xml)
require_same(${WORK}/fr.xml ${WORK}/expected-fr.xml)
