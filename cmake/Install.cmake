# Install rules: library, headers, what debuggers read, CMake package and pkg-config module.
include(CMakePackageConfigHelpers)

install(TARGETS lum EXPORT LumTargets)
set_target_properties(lum PROPERTIES EXPORT_NAME Lum)
install(DIRECTORY include/Lum TYPE INCLUDE)

install(DIRECTORY tools/debuggers DESTINATION ${CMAKE_INSTALL_DATADIR}/lum)
# gdb looks for a library's printers under the library's whole path, which is known when it is installed.
if(BUILD_SHARED_LIBS)
    install(CODE "
        set(library \"${CMAKE_INSTALL_LIBDIR}\")
        cmake_path(ABSOLUTE_PATH library BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\")
        file(REAL_PATH \"\${library}\" library)
        file(INSTALL \"${PROJECT_SOURCE_DIR}/tools/debuggers/lum_gdb.py\"
             DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/gdb/auto-load\${library}\"
             RENAME \"$<TARGET_FILE_NAME:lum>-gdb.py\")")
endif()

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Lum)
install(EXPORT LumTargets NAMESPACE Lum:: DESTINATION ${package_dir})
configure_package_config_file(cmake/LumConfig.cmake.in LumConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(LumConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LumConfig.cmake ${PROJECT_BINARY_DIR}/LumConfigVersion.cmake
        DESTINATION ${package_dir})

# Relative, so that the installed tree can be moved.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
# Who links the static library links what it needs. No header of Lum needs these, apart from bridges.
set(requires)
if(NOT BUILD_SHARED_LIBS)
    set(requires "Requires: icu-uc")
    if(LUM_READS_PLIST)
        string(APPEND requires ", libplist-2.0")
    endif()
endif()
configure_file(cmake/lum.pc.in lum.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lum.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
