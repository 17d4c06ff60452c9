# What debuggers show of the library's values: a natvis file, and printers for gdb, which loads them with the library.
# They stand beside a library that was built, and at the path of an installed one below gdb's auto-load folder.
set(printers "${PROJECT_SOURCE_DIR}/packaging/gdb/VYXInfUtils-gdb.py")
if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
  file(GENERATE OUTPUT "$<TARGET_FILE:VYXInfUtils>-gdb.py" INPUT "${printers}")
endif()
if(NOT VYX_INSTALL)
  return()
endif()

install(FILES "${PROJECT_SOURCE_DIR}/packaging/natvis/VYXInfUtils.natvis"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/VYXInfUtils/natvis" COMPONENT VYXInfUtils_Development)
install(FILES "${printers}" DESTINATION "${CMAKE_INSTALL_DATADIR}/VYXInfUtils/gdb" COMPONENT VYXInfUtils_Development)

# gdb looks in /usr only; elsewhere users name the folder above. cpack lays files down in a folder of its own.
if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
  set(auto_load_script "${PROJECT_BINARY_DIR}/packaging/install_gdb_printers-$<CONFIG>.cmake")
  file(GENERATE OUTPUT "${auto_load_script}" CONTENT "
if(CMAKE_INSTALL_PREFIX MATCHES \"^/usr/?$|/_CPack_Packages/.*/usr$\")
  file(INSTALL DESTINATION
    \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR}\"
    TYPE FILE RENAME \"$<TARGET_FILE_NAME:VYXInfUtils>-gdb.py\" FILES \"${printers}\")
endif()
")
  install(SCRIPT "${auto_load_script}" COMPONENT VYXInfUtils_Development)
endif()
