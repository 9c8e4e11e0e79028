# cmake -DPROGRAM=<executable> [-DARGS=<arg;...>] [-DEXIT_CODE=<n>] [-DEMULATOR=<command>]
#       -DEXPECTED=<file> -P CompareOutput.cmake
# Runs the program (through the emulator, for a cross build) and compares its
# exit status (default 0) and its output with the file. execute_process reads
# CR LF as LF, so the CR LF line ends of a Windows program compare equal to
# the file's.
cmake_minimum_required(VERSION 3.25)
if(NOT DEFINED EXIT_CODE)
  set(EXIT_CODE 0)
endif()
execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${ARGS} OUTPUT_VARIABLE actual RESULT_VARIABLE result)
if(NOT result STREQUAL EXIT_CODE)
  message(FATAL_ERROR "${PROGRAM} ${ARGS} exited with ${result}, expected ${EXIT_CODE}:\n${actual}")
endif()
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  message(FATAL_ERROR "output differs from ${EXPECTED}:\n--- actual\n${actual}")
endif()
