# Third-party libraries, all from the distribution's packages (scripts/install-packages names them).
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(UTF8PROC REQUIRED IMPORTED_TARGET libutf8proc)
pkg_check_modules(LIBDEFLATE REQUIRED IMPORTED_TARGET libdeflate)
pkg_check_modules(LIBZIP REQUIRED IMPORTED_TARGET libzip)
pkg_check_modules(LIBCRYPTO REQUIRED IMPORTED_TARGET libcrypto)
pkg_check_modules(HWY REQUIRED IMPORTED_TARGET libhwy)
find_package(simdjson CONFIG REQUIRED)
