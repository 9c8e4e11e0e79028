# cmake -DPROGRAM=<executable> [-DEMULATOR=<command>] -DEXPECTED=<file> -P CompareOutput.cmake
# Runs the program (through the emulator, for a cross build) and compares its
# output with the file. execute_process reads CR LF as LF, so the CR LF line
# ends of a Windows program compare equal to the file's.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${EMULATOR} ${PROGRAM} OUTPUT_VARIABLE actual RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} exited with ${result}")
endif()
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  message(FATAL_ERROR "output differs from ${EXPECTED}:\n--- actual\n${actual}")
endif()
