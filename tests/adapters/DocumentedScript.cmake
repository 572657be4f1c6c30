# Runs the script that docs/c-library.md shows.
file(READ ${DOCUMENT} text)
string(REGEX MATCH "```python\n(.*)\n```\n" found "${text}")
file(WRITE ${FOLDER}/polygons.py "${CMAKE_MATCH_1}\n")
execute_process(COMMAND ${PYTHON} ${FOLDER}/polygons.py ${LIBRARY} ${DRAWING} RESULT_VARIABLE status OUTPUT_VARIABLE printed)
if(NOT status EQUAL 0 OR NOT printed MATCHES "polygon 0: .*\n[1-9][0-9]* polygons, [1-9][0-9]* points\n$")
    message(FATAL_ERROR "status ${status}: ${printed}")
endif()
