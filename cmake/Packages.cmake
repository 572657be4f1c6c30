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

# Packages made without it would say nothing of what they need.
find_program(TZSVG_SHLIBDEPS dpkg-shlibdeps)
if(TZSVG_SHLIBDEPS)
    set(CPACK_GENERATOR DEB)
else()
    set(CPACK_GENERATOR TGZ)
    message(STATUS "No dpkg-dev: cpack makes one archive instead of Debian packages")
endif()
set(CPACK_PACKAGE_NAME tzsvg)
set(CPACK_PACKAGE_VENDOR tzsvg)
set(CPACK_PACKAGE_CONTACT "tzsvg <tzsvg@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Where the packages' libraries find each other while dependencies are looked up.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/bin)

# tzsvg_package(COMPONENT PACKAGE SECTION DESCRIPTION [DEPENDS...]): a component as a Debian package. The description's first
# line is the summary.
function(tzsvg_package component package section description)
    string(TOUPPER ${component} upper)
    list(JOIN ARGN ", " depends)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${description}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(CPACK_COMPONENTS_ALL "")
set(same_version "(= ${PROJECT_VERSION})")
tzsvg_package(module tzsvg graphics "SVG for a 3D host: the module, and the normalizer beside it
Turns drawings into mesh polygons and back, and serves a drawing as a tiled
image of seventeen levels. The normalizer rewrites drawings that hold more
than the module takes. Hosts find both in /usr/lib/tzsvg.")
tzsvg_package(host tzhost graphics "reference host: SVG drawings to scenes, pictures and tiles, and back
A headless program that does with the module what a 3D application does.
It imports and exports, normalizes and checks drawings, many at once, and
brings manual pages and completions for bash, zsh and fish." "tzsvg ${same_version}")
tzsvg_package(sdk libtzsdk-dev libdevel "SDK for modules of a 3D host and for hosts: headers, static library
Interfaces, wrappers and implementation bases, with a CMake package (TzSDK)
and a file for pkg-config (tzsdk).")
tzsvg_package(c-library libtzhost1 libs "SVG drawings as meshes and tiles, for programs in any language
A plain C library on the module: meshes as flat arrays, images as tiles." "tzsvg ${same_version}")
tzsvg_package(c-library-dev libtzhost-dev libdevel "SVG drawings as meshes and tiles: headers
What is needed to build programs on libtzhost: headers, a CMake package and
a file for pkg-config (tzhost both)." "libtzhost1 ${same_version}")
tzsvg_package(blender tzsvg-blender graphics "SVG drawings as meshes in Blender, and back with their edits
An add-on for Blender. It is switched on in Edit > Preferences > Add-ons,
as \"SVG as Mesh\", and is in File > Import and File > Export from then on."
    "libtzhost1 ${same_version}" "tzsvg ${same_version}" python3-numpy)
if(TARGET tzsvg_oiio)
    tzsvg_package(openimageio tzsvg-openimageio graphics "SVG drawings as tiled textures for programs on OpenImageIO
A plug-in that lets oiiotool, maketx, render engines and other programs read
drawings. They find it by OIIO_LIBRARY_PATH=/usr/lib/tzsvg." "tzsvg ${same_version}")
endif()

set(CPACK_DEBIAN_BLENDER_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_BLENDER_PACKAGE_RECOMMENDS blender)
# What Debian wants to know of a shared library: the package for those who link it, and whom to tell of it.
set(control_files ${PROJECT_BINARY_DIR}/packages)
file(CONFIGURE OUTPUT ${control_files}/shlibs @ONLY CONTENT "libtzhost 1 libtzhost1 (>= ${PROJECT_VERSION})\n")
file(CONFIGURE OUTPUT ${control_files}/triggers @ONLY CONTENT "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_C-LIBRARY_PACKAGE_CONTROL_EXTRA ${control_files}/shlibs ${control_files}/triggers)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
