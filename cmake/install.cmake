# The package: library, headers, CMake package and pkg-config file, all of which may be moved after installation.
include(CMakePackageConfigHelpers)

install(TARGETS ruxlib EXPORT ruxlib
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS ruxlib_static EXPORT ruxlib ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/ruxlib.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/ruxlib DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/ruxlib)
install(EXPORT ruxlib NAMESPACE ruxlib:: FILE ruxlibConfig.cmake DESTINATION ${package_directory})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ruxlibConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ruxlibConfigVersion.cmake DESTINATION ${package_directory})

# From the pkg-config file's own folder back to the prefix, so that the tree can be moved.
file(RELATIVE_PATH prefix_from_pkgconfig
    ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/ruxlib.pc.in ruxlib.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ruxlib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
