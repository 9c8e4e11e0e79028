# cmake -DPROGRAM=<executable> [-DARGS=<arg;...>] [-DEXIT_CODE=<n>] [-DEMULATOR=<command>]
#       (-DEXPECTED=<file> [-DACTUAL=<file> [-DLINE_END=CRLF]] | -DOUTPUT_FILE=<file>)
#       [-DINPUT=<file>] [-DERROR=<text>] [-DJSON=ON]
#       -P CompareOutput.cmake
# Runs the program (through the emulator, for a cross build) and compares its
# exit status (default 0) and its output with the file.
#   ACTUAL       keeps the output in this file and compares it byte for byte.
#                Without it the output is compared as text, and both
#                execute_process and file(READ) read CR LF as LF, so the line
#                ends of a Windows program go unchecked.
#   LINE_END     CRLF: the expected file's line ends are LF, and the program
#                writes each as CR LF (a Windows program's text-mode output)
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
if(DEFINED LINE_END AND NOT (LINE_END STREQUAL "CRLF" AND DEFINED ACTUAL))
  message(FATAL_ERROR "LINE_END=${LINE_END}: only CRLF is known, and it needs ACTUAL")
endif()
if(DEFINED OUTPUT_FILE)
  list(APPEND redirections OUTPUT_FILE ${OUTPUT_FILE})
elseif(DEFINED ACTUAL)
  file(REMOVE ${ACTUAL})
  cmake_path(GET ACTUAL PARENT_PATH actual_dir)
  file(MAKE_DIRECTORY ${actual_dir})
  list(APPEND redirections OUTPUT_FILE ${ACTUAL})
else()
  list(APPEND redirections OUTPUT_VARIABLE actual)
endif()
execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${ARGS} ${redirections}
  ERROR_VARIABLE errors RESULT_VARIABLE result)
if(DEFINED ACTUAL AND EXISTS ${ACTUAL})
  file(READ ${ACTUAL} actual)
  file(READ ${ACTUAL} actual_bytes HEX)
endif()
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
# hex_bytes(<variable> <hex>): the list of the bytes of <hex>, two digits each.
function(hex_bytes variable hex)
  string(REGEX MATCHALL ".." bytes "${hex}")
  set(${variable} "${bytes}" PARENT_SCOPE)
endfunction()

if(DEFINED EXPECTED)
  file(READ ${EXPECTED} expected)
  if(DEFINED ACTUAL)
    file(READ ${EXPECTED} expected_bytes HEX)
    hex_bytes(expected_bytes "${expected_bytes}")
    hex_bytes(actual_bytes "${actual_bytes}")
    set(how " byte for byte (the output is in ${ACTUAL})")
    if(LINE_END STREQUAL "CRLF")
      list(TRANSFORM expected_bytes REPLACE "^0a$" "0d;0a")
      set(how " byte for byte, with CR LF line ends (the output is in ${ACTUAL})")
    endif()
    set(differs FALSE)
    if(NOT actual_bytes STREQUAL expected_bytes)
      set(differs TRUE)
    endif()
  else()
    set(how "")
    set(differs FALSE)
    if(NOT actual STREQUAL expected)
      set(differs TRUE)
    endif()
  endif()
  if(differs)
    message(FATAL_ERROR "output differs from ${EXPECTED}${how}:\n"
                        "--- actual\n${actual}\n--- standard error\n${errors}")
  endif()
endif()
