# One interface target carries what every target of the project is compiled with.
add_library(vyx_settings INTERFACE)

target_compile_options(vyx_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  # Failure traces show the source's place in the framework, the same on every machine and in every build folder.
  "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=VYXInfrastructure/")
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # At -O3 these releases see overlapping copies inside std::string that cannot happen (GCC bug 105651, mended in 13).
  target_compile_options(vyx_settings INTERFACE -Wno-restrict)
endif()
if(VYX_WARNINGS_AS_ERRORS)
  target_compile_options(vyx_settings INTERFACE -Werror)
endif()

if(VYX_SANITIZE STREQUAL "address")
  target_compile_options(vyx_settings INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vyx_settings INTERFACE -fsanitize=address,undefined)
elseif(VYX_SANITIZE STREQUAL "thread")
  target_compile_options(vyx_settings INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(vyx_settings INTERFACE -fsanitize=thread)
elseif(VYX_SANITIZE)
  message(FATAL_ERROR "VYX_SANITIZE is '${VYX_SANITIZE}': only 'address' and 'thread' are known")
endif()
