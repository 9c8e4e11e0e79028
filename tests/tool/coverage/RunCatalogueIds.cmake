# cmake -DPROGRAM=<tool> [-DEMULATOR=<command>] -DINPUT=<tests/tool/coverage/input>
#       -DEXPECTED=<tests/tool/coverage/expected> -DCATALOGUE=<walkthrough catalogue>
#       -DWORK=<scratch directory> -P RunCatalogueIds.cmake
# coverage --record adds an identifier that the record lacks as a line at its
# end, the earlier lines as they were, and then finds it recorded; a record
# with a malformed line is never written.
cmake_minimum_required(VERSION 3.25)

include(${CMAKE_CURRENT_LIST_DIR}/../ToolRuns.cmake)

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
set(identified --mdib ${INPUT}/identified.xml ${CATALOGUE})

file(COPY_FILE ${INPUT}/earlier-ids.txt ${WORK}/ids.txt)
run_tool(0 "" coverage --catalogue-ids ${WORK}/ids.txt --record ${identified})
require_same(${WORK}/ids.txt ${EXPECTED}/earlier-ids-recorded.txt)
run_tool(0 "" coverage --catalogue-ids ${WORK}/ids.txt --record ${identified})
require_same(${WORK}/ids.txt ${EXPECTED}/earlier-ids-recorded.txt)

# A record that is not there yet is empty; --json tells that this run recorded.
execute_process(COMMAND ${EMULATOR} ${PROGRAM} coverage --json --catalogue-ids ${WORK}/new.txt --record ${identified}
  RESULT_VARIABLE status OUTPUT_VARIABLE output)
if(NOT status EQUAL 0 OR NOT output MATCHES "\"recorded\": true")
  message(FATAL_ERROR "coverage --json --record exited with ${status}:\n${output}")
endif()
require_same(${WORK}/new.txt ${EXPECTED}/new-ids-recorded.txt)

file(COPY_FILE ${INPUT}/malformed-ids.txt ${WORK}/malformed.txt)
run_tool(2 "" coverage --catalogue-ids ${WORK}/malformed.txt --record ${identified})
require_same(${WORK}/malformed.txt ${INPUT}/malformed-ids.txt)
