# Install rules: library, headers, CMake package and pkg-config module.
include(CMakePackageConfigHelpers)

install(TARGETS lum EXPORT LumTargets)
set_target_properties(lum PROPERTIES EXPORT_NAME Lum)
install(DIRECTORY include/Lum TYPE INCLUDE)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Lum)
install(EXPORT LumTargets NAMESPACE Lum:: DESTINATION ${package_dir})
configure_package_config_file(cmake/LumConfig.cmake.in LumConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(LumConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LumConfig.cmake ${PROJECT_BINARY_DIR}/LumConfigVersion.cmake
        DESTINATION ${package_dir})

# Relative, so that the installed tree can be moved.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
# Who links the static library links what it needs.
if(BUILD_SHARED_LIBS)
    set(requires Requires.private)
else()
    set(requires Requires)
endif()
configure_file(cmake/lum.pc.in lum.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lum.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
