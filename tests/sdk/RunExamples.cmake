# cmake -DTZHOST=... -DMODULE=... -DSAMPLE=... -DTREE=... -P RunExamples.cmake: the examples do what they say. TREE holds
# what was built of them.
set(folder ${TREE}/examples)
file(MAKE_DIRECTORY ${folder})
# expect(STATUS STDERR COMMAND...)
function(expect wanted told)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE output ERROR_VARIABLE error
                    RESULT_VARIABLE status)
    if(NOT status EQUAL wanted OR NOT error MATCHES "^${told}$")
        message(FATAL_ERROR "${ARGN}: exit status ${status}, stderr \"${error}\", stdout:\n${output}")
    endif()
endfunction()

# The saver, on what the tiny module's loader made.
set(saver_and_image ${TZHOST} --module ${TREE}/saver-and-image-same/saver_and_image.so)
file(WRITE ${folder}/drawing.triangle "triangle teal")
expect(0 "" ${TZHOST} --module ${TREE}/tiny-module-same/tiny.so import drawing.triangle scene.json)
expect(0 "" ${saver_and_image} export scene.json scene.outline --prepare)
file(READ ${folder}/scene.outline outline)
if(NOT outline STREQUAL "teal 0,0 2,0 1,1\n")
    message(FATAL_ERROR "not the triangle's outline: ${outline}")
endif()
file(WRITE ${folder}/high.json [==[{"format": "tzscene", "version": 1, "items": [
    {"type": "mesh", "name": "high", "points": [[0,0,0],[0,0,1]], "polygons": []}]}]==])
expect(0 "warning: .*heights along z are not saved\n" ${saver_and_image} export high.json high.outline)

# The image loader.
file(WRITE ${folder}/board.checker "checker 32")
expect(0 "" ${saver_and_image} image-info board.checker)
foreach(row IN ITEMS "7 7 1 1 1 1" "8 7 0 0 0 1" "8 8 1 1 1 1")
    string(REGEX MATCH "^([0-9]+) ([0-9]+) (.*)$" row "${row}")
    set(shade "${CMAKE_MATCH_3}")
    execute_process(COMMAND ${saver_and_image} sample board.checker 0 ${CMAKE_MATCH_1} ${CMAKE_MATCH_2}
                    WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE pixel COMMAND_ERROR_IS_FATAL ANY)
    if(NOT pixel STREQUAL "${shade}\n")
        message(FATAL_ERROR "no checkerboard: ${row}: ${pixel}")
    endif()
endforeach()
expect(0 "" ${saver_and_image} tile board.checker 0 0 0 board.rgba32f)
file(SIZE ${folder}/board.rgba32f size)
if(NOT size EQUAL 16384)
    message(FATAL_ERROR "a tile of ${size} bytes")
endif()
file(WRITE ${folder}/board.checker "checker 0")
expect(1 "tzhost: board.checker: recognise: .*" ${saver_and_image} image-info board.checker --log log.txt)
file(READ ${folder}/log.txt log)
if(NOT log MATCHES "a checkerboard has 1 to 4096 pixels to a side")
    message(FATAL_ERROR "the log says: ${log}")
endif()

# The minimal host writes what tzhost writes.
set(host ${TREE}/minimal-host-same/minimal-host)
expect(0 "" ${host} ${MODULE} ${SAMPLE} minimal.svg)
expect(0 ".*" ${TZHOST} roundtrip ${SAMPLE} full.svg)
expect(0 "" ${CMAKE_COMMAND} -E compare_files minimal.svg full.svg)
expect(1 "outline: 0x80000005 .not recognised.\n" ${host} ${MODULE} outline nothing.svg)

# The table of operations as the document describes it.
execute_process(COMMAND ${TREE}/from-c-same/from-c ${MODULE} OUTPUT_VARIABLE told COMMAND_ERROR_IS_FATAL ANY)
if(NOT told STREQUAL "SDK 1.0\nquery: 00000000\nwithout a host: 80000002\nreferences left: 1, then 0\n")
    message(FATAL_ERROR "from C: ${told}")
endif()
