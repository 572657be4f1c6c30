# run(COMMAND...): in FOLDER; one that fails ends the script with what it printed.
function(run)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${FOLDER} OUTPUT_VARIABLE output ERROR_VARIABLE output
                    RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}: exit status ${status}\n${output}")
    endif()
endfunction()
