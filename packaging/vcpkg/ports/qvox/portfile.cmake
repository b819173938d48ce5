# An overlay port of the checkout that it lies in:
#   vcpkg install qvox --overlay-ports=<checkout>/packaging/vcpkg/ports
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../../.." ABSOLUTE)

# The library is a shared one, whatever the triplet says.
set(VCPKG_LIBRARY_LINKAGE dynamic)

vcpkg_check_features(OUT_FEATURE_OPTIONS options FEATURES tools QVOX_BUILD_TOOLS)
vcpkg_find_acquire_program(BISON)
get_filename_component(bison_folder "${BISON}" DIRECTORY)
vcpkg_add_to_path("${bison_folder}")

vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS ${options} -DQVOX_BUILD_EXAMPLES=OFF -DQVOX_BUILD_TESTS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/qvox)
vcpkg_fixup_pkgconfig()
if("tools" IN_LIST FEATURES)
  vcpkg_copy_tools(TOOL_NAMES qvox AUTO_CLEAN)
endif()

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/packaging/debian/copyright")
