# cmake -DPROGRAM=<tool> [-DEMULATOR=<command>] -DSOURCE=<catalogue> -DEXPECTED=<its pseudo file>
#       -DWORK=<scratch directory> -P RunOutputTest.cmake
# The tool's output is written whole or not at all, and never over an input:
# pseudo refuses an output that is its input, by name or through a link, and
# leaves it byte for byte; it replaces an earlier output whole; a target that
# cannot be replaced stays as it was, and no temporary file is left beside it.
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/../ToolRuns.cmake)

function(pseudo expected_status error_text)
  run_tool(${expected_status} "${error_text}" pseudo --from en-US --to en-XA ${ARGN})
endfunction()

function(require_no_temporary_files)
  file(GLOB left LIST_DIRECTORIES true ${WORK}/.*tmp*)
  if(left)
    message(FATAL_ERROR "temporary files left behind: ${left}")
  endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
file(COPY_FILE ${SOURCE} ${WORK}/self.xml)

pseudo(2 "is the input" ${WORK}/self.xml -o ${WORK}/self.xml)
require_same(${WORK}/self.xml ${SOURCE})
if(NOT WIN32)
  file(CREATE_LINK self.xml ${WORK}/link.xml SYMBOLIC)
  pseudo(2 "is the input" ${WORK}/self.xml -o ${WORK}/link.xml)
  require_same(${WORK}/self.xml ${SOURCE})
endif()

file(WRITE ${WORK}/out.xml "an earlier output")
pseudo(0 "" ${WORK}/self.xml -o ${WORK}/out.xml)
require_same(${WORK}/out.xml ${EXPECTED})

file(MAKE_DIRECTORY ${WORK}/taken.xml)
file(WRITE ${WORK}/taken.xml/inside "kept")
pseudo(2 "cannot write ${WORK}/taken.xml: Is a directory" ${WORK}/self.xml -o ${WORK}/taken.xml)
file(READ ${WORK}/taken.xml/inside kept)
if(NOT kept STREQUAL "kept")
  message(FATAL_ERROR "the directory in the way was changed")
endif()
require_no_temporary_files()
