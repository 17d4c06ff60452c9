# What "cmake --install" lays down: the library, its headers, the programs with the helper beside them, and what the
# programs and the log read.
include(GNUInstallDirs)

install(TARGETS VYXInfUtils)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/VYXInfUtils.m/include/" "${PROJECT_SOURCE_DIR}/platform/include/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/VYXInfUtils")
install(TARGETS VYXInfParentProcessKiller)
if(VYX_BUILD_EXAMPLES)
  set_target_properties(MediaCatalogue PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  install(TARGETS MediaCatalogue)
endif()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources" DESTINATION "${CMAKE_INSTALL_DATADIR}/VYXInfUtils")
