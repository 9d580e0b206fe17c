# Three Debian packages, by `cpack -G DEB` in a build of the preset `package`; scripts/package does it all.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vx-opengl64)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development examples)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_EXAMPLES_DEPENDS runtime)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(VX_PACKAGE_MAINTAINER "The VX_OpenGL64 authors <maintainers@vx-opengl64.invalid>" CACHE STRING "Who answers for the packages")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${VX_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}")

set(runtime_package libvx-opengl64-${PROJECT_VERSION_MAJOR})
set(development_package libvx-opengl64-dev)
set(examples_package vx-opengl64-examples)
set(runtime_section libs)
set(development_section libdevel)
set(examples_section graphics)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS libgl1-mesa-dri)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/cmake/package/triggers")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS libglm-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS libepoxy-dev)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "A host subclasses a render pipeline, and the toolkit calls it at each refresh
of the display, on a thread of its own, in a window or without any display.
.
This package has the shared library.")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "A host subclasses a render pipeline, and the toolkit calls it at each refresh
of the display, on a thread of its own, in a window or without any display.
.
This package has the headers, the files for CMake and pkg-config, and pages on
how to write a host.")
set(CPACK_COMPONENT_EXAMPLES_DESCRIPTION "A host subclasses a render pipeline, and the toolkit calls it at each refresh
of the display, on a thread of its own, in a window or without any display.
.
This package has example programs, and vx_doctor, which tells what a machine
gives the toolkit and whether a view can run there.")

find_program(VX_GZIP gzip REQUIRED)
set(pages "${PROJECT_BINARY_DIR}/package")
file(MAKE_DIRECTORY "${pages}")
function(vx_gzip from to)
    execute_process(COMMAND "${VX_GZIP}" -9nc "${from}" OUTPUT_FILE "${pages}/${to}" COMMAND_ERROR_IS_FATAL ANY)
endfunction()
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/package/changelog.in package/changelog @ONLY)
configure_file(cmake/package/copyright.in package/copyright @ONLY)
vx_gzip("${pages}/changelog" changelog.Debian.gz)
vx_gzip("${PROJECT_SOURCE_DIR}/CHANGELOG.md" changelog.gz)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} name)
    set(CPACK_DEBIAN_${name}_PACKAGE_NAME ${${component}_package})
    set(CPACK_DEBIAN_${name}_PACKAGE_SECTION ${${component}_section})
    install(FILES "${pages}/copyright" "${pages}/changelog.Debian.gz" "${pages}/changelog.gz"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${${component}_package}"
        COMPONENT ${component})
endforeach()

# One for each program, kept in man/.
file(GLOB manuals CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/man/*.1")
foreach(manual IN LISTS manuals)
    get_filename_component(name "${manual}" NAME)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${manual}")
    vx_gzip("${manual}" ${name}.gz)
    install(FILES "${pages}/${name}.gz" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1"
        COMPONENT examples)
endforeach()
include(CPack)
