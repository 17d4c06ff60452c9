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
if(WIN32)
  # Nothing of the compiler's own has to stand beside the programs and the library. Test programs have more sections
  # than the usual object format counts.
  target_link_options(vyx_settings INTERFACE -static)
  target_compile_options(vyx_settings INTERFACE -Wa,-mbig-obj)
endif()
if(VYX_WARNINGS_AS_ERRORS)
  target_compile_options(vyx_settings INTERFACE -Werror)
endif()

if(VYX_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # The code that the sanitizers put in hides from this warning what is initialised.
  target_compile_options(vyx_settings INTERFACE -Wno-maybe-uninitialized)
endif()

# What the library's own layers are compiled with on top of it.
add_library(vyx_layer_settings INTERFACE)
target_link_libraries(vyx_layer_settings INTERFACE vyx_settings)

# What is shipped stops where memory is misused instead of going on; scripts/check-hardening holds what was built to it.
if(CMAKE_BUILD_TYPE MATCHES "^(Release|MinSizeRel)$" AND NOT VYX_SANITIZE)
  target_compile_definitions(vyx_layer_settings INTERFACE _GLIBCXX_ASSERTIONS)
  if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
    target_compile_definitions(vyx_layer_settings INTERFACE _FORTIFY_SOURCE=2)
    target_compile_options(vyx_settings INTERFACE -fstack-protector-strong -fstack-clash-protection)
    target_link_options(vyx_settings INTERFACE LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i.86)$")
      target_compile_options(vyx_settings INTERFACE -fcf-protection)
    endif()
  endif()
endif()

if(VYX_SANITIZE STREQUAL "address")
  target_compile_options(vyx_settings INTERFACE -fsanitize=address -fno-omit-frame-pointer)
  target_link_options(vyx_settings INTERFACE -fsanitize=address,undefined)
  # Undefined behaviour is looked for in the library; in the tests as well it would double the time that they compile.
  target_compile_options(vyx_layer_settings INTERFACE -fsanitize=undefined -fno-sanitize-recover=all)
elseif(VYX_SANITIZE STREQUAL "thread")
  target_compile_options(vyx_settings INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(vyx_settings INTERFACE -fsanitize=thread)
elseif(VYX_SANITIZE)
  message(FATAL_ERROR "VYX_SANITIZE is '${VYX_SANITIZE}': only 'address' and 'thread' are known")
endif()

if(VYX_BUILD_FUZZERS)
  # The fuzzing engine learns from the layers which input reaches what; other programs link them unchanged.
  target_compile_options(vyx_layer_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

if(VYX_COVERAGE)
  # The tests count as well: the linker keeps one copy of an inline function, which may be theirs.
  target_compile_options(vyx_settings INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(vyx_settings INTERFACE --coverage)
endif()
