# cmake -DPROGRAM=<tool> -DARGS=<arg;...> -DEXPECTED=<file> -DEXIT_CODE=<n> -P RunTool.cmake
# Runs the tool and compares its standard output and exit status with the expected ones.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${PROGRAM} ${ARGS} OUTPUT_VARIABLE actual RESULT_VARIABLE result)
if(NOT result STREQUAL EXIT_CODE)
  message(FATAL_ERROR "${PROGRAM} ${ARGS} exited with ${result}, expected ${EXIT_CODE}:\n${actual}")
endif()
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  message(FATAL_ERROR "output differs from ${EXPECTED}:\n--- actual\n${actual}")
endif()
