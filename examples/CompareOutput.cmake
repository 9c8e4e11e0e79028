# cmake -DPROGRAM=<executable> -DEXPECTED=<file> -P CompareOutput.cmake
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE actual RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} exited with ${result}")
endif()
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  message(FATAL_ERROR "output differs from ${EXPECTED}:\n--- actual\n${actual}")
endif()
