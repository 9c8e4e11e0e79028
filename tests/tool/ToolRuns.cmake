# Helpers of the scripts that run zalt-lts-catalogue (PROGRAM, under EMULATOR
# where one is given) and look at the files it leaves, for include() in a
# cmake -P script.

# Runs the tool with ARGN; fails unless it exits with `expected_status` and
# its standard error holds `error_text` (which may be empty).
function(run_tool expected_status error_text)
  execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${ARGN}
    RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status STREQUAL expected_status)
    message(FATAL_ERROR "${ARGN} exited with ${status}, expected ${expected_status}:\n${output}${errors}")
  endif()
  string(FIND "${errors}" "${error_text}" found)
  if(found EQUAL -1)
    message(FATAL_ERROR "${ARGN}: standard error does not hold '${error_text}':\n${errors}")
  endif()
endfunction()

function(require_same actual expected)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${actual} ${expected} RESULT_VARIABLE differs)
  if(differs)
    message(FATAL_ERROR "${actual} is not byte for byte ${expected}")
  endif()
endfunction()
