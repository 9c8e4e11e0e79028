# cmake -DPROGRAM=<executable> [-DEMULATOR=<command>] -DEXPECTED=<file> -P CompareOutput.cmake
# Runs the program (through the emulator, for a cross build) and compares its
# output with the file. Line ends are compared as LF: a Windows program writes
# CR LF.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND ${EMULATOR} ${PROGRAM} OUTPUT_VARIABLE actual RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${PROGRAM} exited with ${result}")
endif()
string(REPLACE "\r\n" "\n" actual "${actual}")
file(READ ${EXPECTED} expected)
if(NOT actual STREQUAL expected)
  message(FATAL_ERROR "output differs from ${EXPECTED}:\n--- actual\n${actual}")
endif()
