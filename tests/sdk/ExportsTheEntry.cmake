# cmake -DNM=... -DMODULE=... -P ExportsTheEntry.cmake: fails when the module exports anything but its entry.
execute_process(COMMAND ${NM} -D --defined-only ${MODULE} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "^[0-9a-f]+ T _ITzModule_Create\n$")
    message(FATAL_ERROR "${MODULE} exports:\n${symbols}")
endif()
