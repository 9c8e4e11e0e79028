# cmake -DPROGRAM=<executable> [-DARGS=<arg;...>] [-DEXIT_CODE=<n>] [-DEMULATOR=<command>]
#       (-DEXPECTED=<file> | -DOUTPUT_FILE=<file>) [-DINPUT=<file>] [-DERROR=<text>] [-DJSON=ON]
#       -P CompareOutput.cmake
# Runs the program (through the emulator, for a cross build) and compares its
# exit status (default 0) and its output with the file. execute_process reads
# CR LF as LF, so the CR LF line ends of a Windows program compare equal to
# the file's.
#   OUTPUT_FILE  sends the output there instead of comparing it, for a file
#                that cannot be written such as /dev/full
#   INPUT        the program's standard input
#   ERROR        text that its standard error must hold
#   JSON         the output must be one well-formed JSON document, whatever
#                the expected file says
cmake_minimum_required(VERSION 3.25)
if(NOT DEFINED EXIT_CODE)
  set(EXIT_CODE 0)
endif()
set(redirections)
if(DEFINED INPUT)
  list(APPEND redirections INPUT_FILE ${INPUT})
endif()
if(DEFINED OUTPUT_FILE)
  list(APPEND redirections OUTPUT_FILE ${OUTPUT_FILE})
else()
  list(APPEND redirections OUTPUT_VARIABLE actual)
endif()
execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${ARGS} ${redirections}
  ERROR_VARIABLE errors RESULT_VARIABLE result)
if(NOT result STREQUAL EXIT_CODE)
  message(FATAL_ERROR "${PROGRAM} ${ARGS} exited with ${result}, expected ${EXIT_CODE}:\n${actual}\n${errors}")
endif()
if(DEFINED ERROR)
  string(FIND "${errors}" "${ERROR}" found)
  if(found EQUAL -1)
    message(FATAL_ERROR "standard error does not hold '${ERROR}':\n${errors}")
  endif()
endif()
if(JSON)
  string(JSON type ERROR_VARIABLE invalid TYPE "${actual}")
  if(invalid)
    message(FATAL_ERROR "output is not JSON (${invalid}):\n${actual}")
  endif()
endif()
if(DEFINED EXPECTED)
  file(READ ${EXPECTED} expected)
  if(NOT actual STREQUAL expected)
    message(FATAL_ERROR "output differs from ${EXPECTED}:\n--- actual\n${actual}\n--- standard error\n${errors}")
  endif()
endif()
