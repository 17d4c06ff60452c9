# An overlay port: it builds the tree that it stands in, so that nothing is downloaded but what the library needs.
vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../../.." ABSOLUTE)

vcpkg_find_acquire_program(PKGCONFIG)
vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS
    -DVYX_BUILD_BENCHMARKS=OFF
    -DVYX_BUILD_EXAMPLES=OFF
    -DVYX_BUILD_TESTS=OFF
    -DVYX_INSTALL=ON
    -DVYX_WARNINGS_AS_ERRORS=OFF
    "-DPKG_CONFIG_EXECUTABLE=${PKGCONFIG}")
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME VYXInfUtils CONFIG_PATH lib/cmake/VYXInfUtils)
vcpkg_fixup_pkgconfig()

# The helper bears this name on every host; vcpkg appends it on Windows only.
set(helper VYXInfParentProcessKiller)
if(NOT VCPKG_TARGET_IS_WINDOWS)
  string(APPEND helper .exe)
endif()
vcpkg_copy_tools(TOOL_NAMES ${helper} AUTO_CLEAN)

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/packaging/debian/copyright" "${SOURCE_PATH}/THIRD_PARTY.md")
