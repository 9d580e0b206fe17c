include(CMakePackageConfigHelpers)
include(GNUInstallDirs)
include(VX_PublicHeaders)

# Components are the packages of VX_Package.cmake; a plain installation takes them all.
install(TARGETS VX_OpenGL64 EXPORT VX_OpenGL64Targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT runtime NAMELINK_COMPONENT development)
foreach(header IN LISTS VX_PUBLIC_HEADERS)
    get_filename_component(folder "${header}" DIRECTORY)
    install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}" COMPONENT development)
endforeach()

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VX_OpenGL64")
install(EXPORT VX_OpenGL64Targets NAMESPACE VX_OpenGL64:: DESTINATION "${package_dir}" COMPONENT development)
configure_package_config_file(cmake/VX_OpenGL64Config.cmake.in VX_OpenGL64Config.cmake
    INSTALL_DESTINATION "${package_dir}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(VX_OpenGL64ConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/VX_OpenGL64Config.cmake" "${PROJECT_BINARY_DIR}/VX_OpenGL64ConfigVersion.cmake"
    DESTINATION "${package_dir}" COMPONENT development)

# The prefix is told from where the file lies, so that an installed tree may be moved.
file(RELATIVE_PATH VX_PC_TO_PREFIX
    "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/VX_OpenGL64.pc.in VX_OpenGL64.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/VX_OpenGL64.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT development)
if(VX_PACKAGE)
    set(CMAKE_INSTALL_DOCDIR "${CMAKE_INSTALL_DATADIR}/doc/libvx-opengl64-dev")
endif()
# Side by side as in the tree, so that their links hold.
install(FILES CHANGELOG.md README.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development)
# The scenes that docs/gallery.md shows, to be copied.
install(DIRECTORY examples/gallery examples/support DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples" COMPONENT development)
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT development PATTERN Doxyfile EXCLUDE)
install(FILES LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}") # a package has it as its copyright
