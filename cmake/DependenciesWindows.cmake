# The same for Windows: static libraries that scripts/windows-dependencies built, and those of the system.
set(ZLIB_USE_STATIC_LIBS ON)
find_package(ZLIB REQUIRED)
foreach(package hwy libzip simdjson)
  find_package(${package} CONFIG)
  if(NOT ${package}_FOUND)
    message(FATAL_ERROR "'${package}' is missing for Windows: run scripts/windows-dependencies first")
  endif()
endforeach()
find_library(VYX_UTF8PROC utf8proc REQUIRED)
find_library(VYX_LIBDEFLATE deflate REQUIRED)
find_path(VYX_UTF8PROC_HEADERS utf8proc.h REQUIRED)

target_compile_definitions(vyx_third_party INTERFACE UTF8PROC_STATIC)
target_include_directories(vyx_third_party SYSTEM INTERFACE "${VYX_UTF8PROC_HEADERS}")
target_link_libraries(vyx_third_party INTERFACE
  hwy::hwy
  libzip::zip
  simdjson::simdjson
  "${VYX_LIBDEFLATE}"
  "${VYX_UTF8PROC}"
  Threads::Threads
  bcrypt)
