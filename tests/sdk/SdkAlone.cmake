# cmake -DSDK=... -DEXAMPLE=... -DFOLDER=... -DCOMPILER=... -DPKG_CONFIG=... -P SdkAlone.cmake: configures, builds and
# installs a copy of the SDK that has nothing of the tree beside it, moves what was installed, and builds the tiny module
# against it with what pkg-config says.
file(REMOVE_RECURSE ${FOLDER})
file(COPY ${SDK} DESTINATION ${FOLDER})
include(${CMAKE_CURRENT_LIST_DIR}/../common/Run.cmake)
run(${CMAKE_COMMAND} -G Ninja -S hostsdk -B build -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_INSTALL_PREFIX=${FOLDER}/first
    -DCMAKE_INSTALL_LIBDIR=lib/multi/arch)
run(${CMAKE_COMMAND} --build build)
run(${CMAKE_COMMAND} --install build)
file(RENAME ${FOLDER}/first ${FOLDER}/moved)
if(NOT EXISTS ${FOLDER}/moved/lib/multi/arch/cmake/TzSDK/TzSDKConfig.cmake)
    message(FATAL_ERROR "no CMake package was installed")
endif()

set(ENV{PKG_CONFIG_PATH} ${FOLDER}/moved/lib/multi/arch/pkgconfig)
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs "tzsdk >= 1" OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${COMPILER} -std=c++17 -fPIC -shared -fvisibility=hidden ${EXAMPLE}/TinyModule.cpp ${flags}
    -Wl,--version-script=${EXAMPLE}/exports.map -o tiny.so)
