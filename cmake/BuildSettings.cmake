# What every target of this tree is compiled with.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# A module shares nothing with its host but the interfaces; see the version script in module/.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# tzhost looks for the module beside itself, in the build tree and when installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
                    $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual> -Wundef -Werror)
# Qt 6 already drops these; with Qt 5.15 they keep the code to what both offer.
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

# GCC 12 drops the rounding of a double to single precision and back when it vectorizes two of them side by side. Imported
# points are defined in single precision in places; PathConversion/straightThirds pins it.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fno-tree-vectorize)
endif()

# tzsvg_precompile(TARGET ...): target_precompile_headers(), where the presets ask for it. A source includes what it
# uses all the same: the preset `qt5` builds without.
function(tzsvg_precompile)
    if(TZSVG_PRECOMPILE)
        target_precompile_headers(${ARGV})
    endif()
endfunction()

# Many small sources: compiled in groups, which read each header once.
if(TZSVG_PRECOMPILE)
    set(CMAKE_UNITY_BUILD ON)
endif()

if(TZSVG_SANITIZE)
    # GCC's warning of uninitialized values is wrong about instrumented code.
    add_compile_options(-fsanitize=${TZSVG_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -O1
                        $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_link_options(-fsanitize=${TZSVG_SANITIZE})
endif()
if(TZSVG_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
