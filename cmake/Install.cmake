# What "cmake --install" lays down, in three components that packages are made of: the library alone, the programs with
# what they read, and what a developer needs. Every path inside the installed files is relative: the tree may be moved.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(include_folder "${CMAKE_INSTALL_INCLUDEDIR}/VYXInfUtils")
set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/VYXInfUtils")
set(resource_folder "${CMAKE_INSTALL_DATADIR}/VYXInfUtils/resources")

target_include_directories(VYXInfUtils INTERFACE "$<INSTALL_INTERFACE:${include_folder}>")
install(TARGETS VYXInfUtils EXPORT VYXInfUtilsTargets
  RUNTIME COMPONENT VYXInfUtils_Runtime
  LIBRARY COMPONENT VYXInfUtils_Runtime NAMELINK_COMPONENT VYXInfUtils_Development
  ARCHIVE COMPONENT VYXInfUtils_Development)

# The helper is exported as well: a program that ends others needs a copy of it in its own folder.
install(TARGETS VYXInfParentProcessKiller EXPORT VYXInfUtilsTargets
  RUNTIME COMPONENT VYXInfUtils_Programs)
if(VYX_BUILD_EXAMPLES)
  file(RELATIVE_PATH library_place "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
  set_target_properties(MediaCatalogue PROPERTIES INSTALL_RPATH "$ORIGIN/${library_place}")
  install(TARGETS MediaCatalogue
    RUNTIME COMPONENT VYXInfUtils_Programs)
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/msgcatalog" DESTINATION "${resource_folder}"
    COMPONENT VYXInfUtils_Programs)
endif()

install(DIRECTORY "${PROJECT_SOURCE_DIR}/VYXInfUtils.m/include/" "${PROJECT_SOURCE_DIR}/platform/include/"
  DESTINATION "${include_folder}" COMPONENT VYXInfUtils_Development)
if(WIN32)
  include(InstallWindows)
endif()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/logging" DESTINATION "${resource_folder}"
  COMPONENT VYXInfUtils_Development)
# The pages lie to each other, and to the examples, as they do in the tree, so that their links hold.
install(FILES
  "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${PROJECT_SOURCE_DIR}/CONTRIBUTING.md" "${PROJECT_SOURCE_DIR}/HACKING.md"
  "${PROJECT_SOURCE_DIR}/README.md" "${PROJECT_SOURCE_DIR}/SECURITY.md" "${PROJECT_SOURCE_DIR}/THIRD_PARTY.md"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT VYXInfUtils_Development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}/examples" DESTINATION "${CMAKE_INSTALL_DOCDIR}"
  COMPONENT VYXInfUtils_Development
  FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.cpp" PATTERN "*.h" PATTERN "*.txt"
  PATTERN "CMakeLists.txt" EXCLUDE PATTERN "doxygen" EXCLUDE)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/tests/consumer" DESTINATION "${CMAKE_INSTALL_DOCDIR}/tests"
  COMPONENT VYXInfUtils_Development)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/logging" DESTINATION "${CMAKE_INSTALL_DOCDIR}/resources"
  COMPONENT VYXInfUtils_Development)

# find_package(VYXInfUtils) and its target VYXInfUtils::VYXInfUtils.
install(EXPORT VYXInfUtilsTargets NAMESPACE VYXInfUtils:: DESTINATION "${package_folder}"
  COMPONENT VYXInfUtils_Development)
configure_package_config_file("${PROJECT_SOURCE_DIR}/packaging/cmake/VYXInfUtilsConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/packaging/VYXInfUtilsConfig.cmake"
  INSTALL_DESTINATION "${package_folder}" PATH_VARS resource_folder)
set(compatibility SameMajorVersion)
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(compatibility SameMinorVersion)
endif()
write_basic_package_version_file("${PROJECT_BINARY_DIR}/packaging/VYXInfUtilsConfigVersion.cmake"
  COMPATIBILITY ${compatibility})
install(FILES
  "${PROJECT_BINARY_DIR}/packaging/VYXInfUtilsConfig.cmake"
  "${PROJECT_BINARY_DIR}/packaging/VYXInfUtilsConfigVersion.cmake"
  DESTINATION "${package_folder}" COMPONENT VYXInfUtils_Development)

# pkg-config vyxinfutils.
file(RELATIVE_PATH prefix_place "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
string(REGEX REPLACE "/$" "" prefix_place "${prefix_place}")
configure_file("${PROJECT_SOURCE_DIR}/packaging/pkgconfig/vyxinfutils.pc.in"
  "${PROJECT_BINARY_DIR}/packaging/vyxinfutils.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/packaging/vyxinfutils.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT VYXInfUtils_Development)
