# Third-party libraries, all from the distribution's packages (scripts/install-packages names them), as one target.
find_package(Threads REQUIRED)
add_library(vyx_third_party INTERFACE)

if(WIN32)
  include(DependenciesWindows)
else()
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(UTF8PROC REQUIRED IMPORTED_TARGET libutf8proc)
  pkg_check_modules(LIBDEFLATE REQUIRED IMPORTED_TARGET libdeflate)
  pkg_check_modules(LIBZIP REQUIRED IMPORTED_TARGET libzip)
  pkg_check_modules(LIBCRYPTO REQUIRED IMPORTED_TARGET libcrypto)
  pkg_check_modules(HWY REQUIRED IMPORTED_TARGET libhwy)
  find_package(simdjson CONFIG REQUIRED)
  target_link_libraries(vyx_third_party INTERFACE
    PkgConfig::HWY
    PkgConfig::LIBCRYPTO
    PkgConfig::LIBDEFLATE
    PkgConfig::LIBZIP
    PkgConfig::UTF8PROC
    simdjson::simdjson
    Threads::Threads)
endif()
