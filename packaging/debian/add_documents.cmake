# Run by cpack over the packages' folders before it packs them: the documents that Debian wants in each. A release's
# date is that of the commit (SOURCE_DATE_EPOCH), so that the same sources give the same packages.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
get_filename_component(top "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" upper)
  set(folder "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}${CPACK_PACKAGING_INSTALL_PREFIX}/share/doc")
  string(APPEND folder "/${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  file(COPY "${CMAKE_CURRENT_LIST_DIR}/copyright" DESTINATION "${folder}")
  configure_file("${CMAKE_CURRENT_LIST_DIR}/changelog.in" "${folder}/changelog.Debian" @ONLY)
  configure_file("${top}/CHANGELOG.md" "${folder}/changelog" COPYONLY)
  execute_process(COMMAND gzip --best --no-name --force changelog changelog.Debian
    WORKING_DIRECTORY "${folder}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
