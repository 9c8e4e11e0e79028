# run(<command> <arg>...): runs a command from a cmake -P script and stops the
# script with the command line and its exit status when it fails. Included by
# the test scripts that install the package and build against it.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    string(JOIN " " command ${ARGV})
    message(FATAL_ERROR "failed (${result}): ${command}")
  endif()
endfunction()
