# cmake -DDOCUMENT=... -DFOLDER=... -P DocumentShows.cmake: fails when a file of the folder does not stand in the
# document as it is.
file(READ ${DOCUMENT} document)
file(GLOB files ${FOLDER}/*)
foreach(file IN LISTS files)
    file(READ ${file} text)
    string(FIND "${document}" "${text}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "${DOCUMENT} does not show ${file} as it is")
    endif()
endforeach()
