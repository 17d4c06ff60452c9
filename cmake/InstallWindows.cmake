# What an installed tree holds on Windows beside the rest: the header that keeps windows.h from hiding names of ours,
# and the licences of everything that is linked into the library and the programs, the compiler's run-time among it.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/platform/include_windows/" DESTINATION "${include_folder}/windows"
  COMPONENT VYXInfUtils_Development)
target_include_directories(VYXInfUtils BEFORE INTERFACE "$<INSTALL_INTERFACE:${include_folder}/windows>")

set(licence_folder "${CMAKE_INSTALL_DATADIR}/VYXInfUtils/licences")
foreach(library highway libdeflate libzip simdjson utf8proc)
  find_file(VYX_LICENCE_OF_${library} ${library} PATH_SUFFIXES share/licences REQUIRED)
  install(FILES "${VYX_LICENCE_OF_${library}}" DESTINATION "${licence_folder}" RENAME "${library}.txt"
    COMPONENT VYXInfUtils_Runtime)
endforeach()
foreach(package gcc-mingw-w64-base mingw-w64-x86-64-dev libz-mingw-w64-dev)
  install(FILES "/usr/share/doc/${package}/copyright" DESTINATION "${licence_folder}" RENAME "${package}.txt"
    COMPONENT VYXInfUtils_Runtime)
endforeach()
