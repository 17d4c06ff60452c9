# The Debian packages: what stands in their control files, and the documents that every package carries.
set(runtime libvyxinfutils${VYX_ABI_VERSION})
set(programs vyxinfutils-bin)
set(development libvyxinfutils-dev)
set(version "${PROJECT_VERSION}-1")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE vyxinfutils)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The programs need the library of this very build, which no installed package tells about.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}/VYXInfUtils.m")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

# Copyright and changelog go into every package.
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/add_documents.cmake")

# Empty, or cpack puts one and the same line before what each package says about itself.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(about "Logging and failure traces, a JSON property tree, texts, URIs, files, archives,
processes and transferable media for the programs of the VYXInfrastructure
framework.")

set(CPACK_DEBIAN_VYXINFUTILS_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_VYXINFUTILS_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_VYXINFUTILS_RUNTIME_PACKAGE_RECOMMENDS ${programs})
set(CPACK_DEBIAN_VYXINFUTILS_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")
set(CPACK_DEBIAN_VYXINFUTILS_RUNTIME_DESCRIPTION "infrastructure utility library (shared library)
${about}")

set(CPACK_DEBIAN_VYXINFUTILS_PROGRAMS_PACKAGE_NAME ${programs})
set(CPACK_DEBIAN_VYXINFUTILS_PROGRAMS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_VYXINFUTILS_PROGRAMS_PACKAGE_DEPENDS "${runtime} (>= ${version})")
set(CPACK_DEBIAN_VYXINFUTILS_PROGRAMS_DESCRIPTION "infrastructure utility library (programs)
${about}

This package holds the helper that ends processes for others, and the example
MediaCatalogue, which catalogues the files of a folder.")

set(CPACK_DEBIAN_VYXINFUTILS_DEVELOPMENT_PACKAGE_NAME ${development})
set(CPACK_DEBIAN_VYXINFUTILS_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_VYXINFUTILS_DEVELOPMENT_PACKAGE_DEPENDS "${runtime} (= ${version}), ${programs} (= ${version})")
set(CPACK_DEBIAN_VYXINFUTILS_DEVELOPMENT_DESCRIPTION "infrastructure utility library (development files)
${about}

This package holds the headers, the pages for developers, and what CMake and
pkg-config read.")
