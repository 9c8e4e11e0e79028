# cmake -DPROGRAM=<tool> [-DEMULATOR=<command>] -DSOURCE=<catalogue of en-US texts>
#       -DCHANGED=<XLIFF file of it-IT that changes one text of it> -DWORK=<scratch directory>
#       -P RunXliffMerge.cmake
# A translation tool that sends back only the unit it changed: its import into
# the catalogue file of the first import changes that text alone, in the
# file's spelling of the language, and keeps every other; --replace drops
# them and says so; a file that is no catalogue is never written over.
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/../ToolRuns.cmake)

# Runs xliff import with ARGN; fails unless it exits with `expected_status`
# and its summary holds `summary`.
function(import expected_status summary)
  execute_process(COMMAND ${EMULATOR} ${PROGRAM} xliff import ${ARGN}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  string(FIND "${output}" "${summary}" found)
  if(NOT status STREQUAL expected_status OR found EQUAL -1)
    message(FATAL_ERROR "xliff import ${ARGN} exited with ${status}, expected ${expected_status} and "
      "'${summary}':\n${output}${errors}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

run_tool(0 "" xliff export --from en-US --to it-IT ${SOURCE} -o ${WORK}/it.xlf)
file(READ ${WORK}/it.xlf exported)
string(REGEX REPLACE "<source>([^<]*)</source>" "<source>\\1</source><target>\\1</target>" translated "${exported}")
file(WRITE ${WORK}/translated.xlf "${translated}")
import(0 "6 texts written: 0 changed, 6 added, 0 kept, 0 dropped; no findings"
  ${WORK}/translated.xlf -o ${WORK}/it.xml)
file(COPY_FILE ${WORK}/it.xml ${WORK}/replaced.xml)

# A file that an older import wrote spells the language in lower case.
file(READ ${WORK}/it.xml earlier)
string(REPLACE "Lang=\"it-IT\"" "Lang=\"it-it\"" earlier "${earlier}")
file(WRITE ${WORK}/it.xml "${earlier}")
string(REPLACE ">A　B<" ">Voce<" merged "${earlier}")
file(WRITE ${WORK}/merged.xml "${merged}")
import(0 "6 texts written: 1 changed, 0 added, 5 kept, 0 dropped; no findings" ${CHANGED} -o ${WORK}/it.xml)
require_same(${WORK}/it.xml ${WORK}/merged.xml)
import(0 "6 texts written: 0 changed, 0 added, 6 kept, 0 dropped; no findings" ${CHANGED} -o ${WORK}/it.xml)
require_same(${WORK}/it.xml ${WORK}/merged.xml)

import(0 "1 text written: 1 changed, 0 added, 0 kept, 5 dropped; no findings"
  --replace ${CHANGED} -o ${WORK}/replaced.xml)
file(STRINGS ${WORK}/replaced.xml texts REGEX "LocalizedText ")
if(NOT texts MATCHES "^[^;]*Lang=\"it-IT\"[^;]*>Voce<[^;]*$")
  message(FATAL_ERROR "--replace wrote other texts than the one imported:\n${texts}")
endif()

file(WRITE ${WORK}/notes.xml "<notes>\n")
file(COPY_FILE ${WORK}/notes.xml ${WORK}/notes-before.xml)
import(2 "notes.xml:1:8: malformed XML" ${CHANGED} -o ${WORK}/notes.xml)
require_same(${WORK}/notes.xml ${WORK}/notes-before.xml)
