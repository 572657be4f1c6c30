# cmake -DTZHOST=... -DMODULE=... -DFOLDER=... -P LoadTinyModule.cmake: has tzhost load the tiny module, list its
# servers and import a file with it.
function(expect_tzhost expected)
    execute_process(
        COMMAND ${TZHOST} --module ${MODULE} ${ARGN}
        WORKING_DIRECTORY ${FOLDER}
        OUTPUT_VARIABLE output ERROR_VARIABLE error RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT error STREQUAL "" OR NOT output MATCHES "${expected}")
        message(FATAL_ERROR "tzhost ${ARGN}: exit status ${status}, stderr \"${error}\", stdout:\n${output}")
    endif()
endfunction()

# A loader says why it refuses.
file(WRITE ${FOLDER}/drawing.triangle "triangle\n")
execute_process(COMMAND ${TZHOST} --module ${MODULE} import drawing.triangle scene.json WORKING_DIRECTORY ${FOLDER}
                ERROR_VARIABLE error RESULT_VARIABLE status)
if(NOT status EQUAL 1 OR NOT error MATCHES "^warning: .*a triangle needs a colour\ntzhost: drawing.triangle: load: 0x80000000")
    message(FATAL_ERROR "tzhost import: exit status ${status}, stderr \"${error}\"")
endif()

file(WRITE ${FOLDER}/drawing.triangle "triangle teal\n")
expect_tzhost("^Triangle_SceneLoader\n  interfaces: tz.sceneLoader/1 tz.server.tags/1\n" servers)
expect_tzhost("^drawing.triangle: 1 shapes, 1 polygons, 3 points, " import drawing.triangle scene.json)

file(READ ${FOLDER}/scene.json scene)
string(JSON vertices GET "${scene}" items 0 polygons 0 vertices)
string(JSON corner GET "${scene}" items 0 points 2 0)
string(JSON fill GET "${scene}" items 0 polygons 0 tags FILL)
string(JSON name GET "${scene}" items 0 name)
string(REGEX REPLACE "[ \n]" "" vertices "${vertices}")
if(NOT "${vertices} ${corner} ${fill} ${name}" STREQUAL "[0,1,2] 1 teal drawing")
    message(FATAL_ERROR "not the triangle: ${scene}")
endif()
