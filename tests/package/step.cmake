# step(command...): runs a command; what it printed is shown, and ends the test, if it fails.
function(step)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV}\nended with ${status}:\n${output}")
  endif()
endfunction()
