# Builds the tree that it is in: vcpkg install lum --overlay-ports=lum/packaging/vcpkg
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
string(COMPARE EQUAL "${VCPKG_LIBRARY_LINKAGE}" dynamic SHARED)

vcpkg_check_features(OUT_FEATURE_OPTIONS FEATURE_OPTIONS FEATURES plist LUM_WITH_PLIST)
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS -DBUILD_SHARED_LIBS=${SHARED} -DLUM_BUILD_TESTS=OFF -DLUM_BUILD_TOOLS=OFF -DLUM_BUILD_SQL=OFF ${FEATURE_OPTIONS})
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME Lum CONFIG_PATH lib/cmake/Lum)
vcpkg_fixup_pkgconfig()

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
