# cmake -DBUILD=... -DFOLDER=... -DCOMPILER=... -DPKG_CONFIG=... -DPROGRAM=... -DDRAWING=... -DBLENDER=... -P InstalledTree.cmake:
# installs everything, moves what was installed, and uses it from there: the program, the C library with what pkg-config says of
# it, and the add-on where Blender, if there is one, looks for its own.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
include(${CMAKE_CURRENT_LIST_DIR}/../common/Run.cmake)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${FOLDER}/first)
set(tree ${FOLDER}/moved)
file(RENAME ${FOLDER}/first ${tree})

unset(ENV{TZSVG_MODULE})
run(${tree}/bin/tzhost roundtrip --normalize ${DRAWING} normalized.svg)
run(${tree}/bin/tzhost roundtrip ${DRAWING} expected.svg)

file(GLOB_RECURSE description ${tree}/tzhost.pc)
get_filename_component(description ${description} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${description})
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs "tzhost >= 1" OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${PKG_CONFIG} --variable=libdir tzhost OUTPUT_VARIABLE libraries
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${COMPILER} ${PROGRAM} ${flags} -pthread -Wl,-rpath,${libraries} -o program)
run(${FOLDER}/program ${tree}/lib/tzsvg/tzsvg.so ${DRAWING} ${FOLDER})

if(BLENDER)
    set(ENV{BLENDER_USER_SCRIPTS} ${tree}/share/blender/scripts)
    set(ENV{BLENDER_USER_CONFIG} ${FOLDER})
    run(${BLENDER} -b --factory-startup --python-exit-code 1 --python-expr "import bpy
bpy.ops.preferences.addon_enable(module='tzsvg')
bpy.ops.import_mesh.tzsvg(filepath='${DRAWING}', normalize=False)
bpy.ops.export_mesh.tzsvg(filepath='${FOLDER}/blender.svg')")
    run(${CMAKE_COMMAND} -E compare_files blender.svg expected.svg)
endif()
