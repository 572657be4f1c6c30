# What `cmake --install` puts where, in components, and the Debian packages that `cpack` makes of them: one a component.
include(GNUInstallDirs)
# What is installed must have been built; tests need not.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

# The module stands apart from libraries that programs link; tzhost and the adapters look for it there.
set(module_folder lib/tzsvg)
install(TARGETS tzsvg LIBRARY DESTINATION ${module_folder} COMPONENT module)
install(TARGETS tznormalize LIBRARY DESTINATION ${module_folder} COMPONENT module)
install(TARGETS tzhost RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT host)
if(TARGET tzsvg_oiio)
    install(TARGETS tzsvg_oiio LIBRARY DESTINATION ${module_folder} COMPONENT openimageio)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tzsvg)
set(CPACK_PACKAGE_VENDOR tzsvg)
set(CPACK_PACKAGE_CONTACT "tzsvg <tzsvg@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Where the packages' libraries find each other while dependencies are looked up.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/bin)

# tzsvg_package(COMPONENT PACKAGE SUMMARY [DEPENDS]): a component as a Debian package.
function(tzsvg_package component package summary)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION ${summary} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARGN}" PARENT_SCOPE)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(CPACK_COMPONENTS_ALL "")
set(same_version "(= ${PROJECT_VERSION})")
tzsvg_package(module tzsvg "SVG for a 3D host: the module, and the normalizer beside it")
tzsvg_package(host tzhost "Reference host: SVG drawings to scenes, pictures and tiles, and back" "tzsvg ${same_version}")
tzsvg_package(sdk libtzsdk-dev "SDK for modules and hosts: headers, static library, CMake package")
tzsvg_package(c-library libtzhost-dev "SVG drawings as meshes and tiles, for programs in any language" "tzsvg ${same_version}")
if(TARGET tzsvg_oiio)
    tzsvg_package(openimageio tzsvg-openimageio "SVG drawings as tiled textures for programs on OpenImageIO" "tzsvg ${same_version}")
endif()
include(CPack)
