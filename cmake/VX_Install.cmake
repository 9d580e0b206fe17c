include(CMakePackageConfigHelpers)
include(GNUInstallDirs)
include(VX_PublicHeaders)

install(TARGETS VX_OpenGL64 EXPORT VX_OpenGL64Targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
foreach(header IN LISTS VX_PUBLIC_HEADERS)
    get_filename_component(folder "${header}" DIRECTORY)
    install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}")
endforeach()

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/VX_OpenGL64")
install(EXPORT VX_OpenGL64Targets NAMESPACE VX_OpenGL64:: DESTINATION "${package_dir}")
configure_package_config_file(cmake/VX_OpenGL64Config.cmake.in VX_OpenGL64Config.cmake
    INSTALL_DESTINATION "${package_dir}" NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(VX_OpenGL64ConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/VX_OpenGL64Config.cmake" "${PROJECT_BINARY_DIR}/VX_OpenGL64ConfigVersion.cmake"
    DESTINATION "${package_dir}")

# The prefix is told from where the file lies, so that an installed tree may be moved.
file(RELATIVE_PATH VX_PC_TO_PREFIX
    "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(cmake/VX_OpenGL64.pc.in VX_OpenGL64.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/VX_OpenGL64.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
# Side by side as in the tree, so that their links hold.
install(FILES LICENSE CHANGELOG.md README.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" PATTERN Doxyfile EXCLUDE)
