# What "cpack" makes of an installed tree: three Debian packages on Linux (scripts/package builds them), one zip file
# elsewhere. The library has a package of its own, named after its soname, so that two versions of it may be installed
# at once; the programs and the developer's files are kept out of it for that reason.
set(VYX_PACKAGE_CONTACT "VYXInfUtils maintainers <maintainers@vyxinfutils.example>" CACHE STRING
  "Who answers for the packages: NAME <ADDRESS>")

set(CPACK_PACKAGE_NAME vyxinfutils)
set(CPACK_PACKAGE_VENDOR "VYXInfUtils maintainers")
set(CPACK_PACKAGE_CONTACT "${VYX_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR ZIP)

set(CPACK_COMPONENTS_ALL VYXInfUtils_Runtime VYXInfUtils_Programs VYXInfUtils_Development)
set(CPACK_COMPONENTS_GROUPING IGNORE)

if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  include("${PROJECT_SOURCE_DIR}/packaging/debian/packages.cmake")
endif()
include(CPack)
