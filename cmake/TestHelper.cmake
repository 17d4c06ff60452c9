find_package(GTest CONFIG REQUIRED)
include(GoogleTest)

set(VYX_TEST_OPTIONS "" CACHE STRING "Compiler options of the test programs alone, such as -O0 to build them sooner")

add_custom_target(vyx_threads_tests)

# What nearly every test reads first, compiled once. The second compiler builds without it and so holds every source to
# its own includes.
option(VYX_PRECOMPILE_TEST_HEADERS "Compile the headers that all tests include only once" ON)
if(VYX_PRECOMPILE_TEST_HEADERS)
  add_executable(vyx_test_headers EXCLUDE_FROM_ALL "${CMAKE_CURRENT_LIST_DIR}/test_headers.cpp")
  target_link_libraries(vyx_test_headers PRIVATE vyx_internals vyx_test_support GTest::gmock)
  target_compile_options(vyx_test_headers PRIVATE ${VYX_TEST_OPTIONS})
  target_precompile_headers(vyx_test_headers PRIVATE
    <gmock/gmock.h> <gtest/gtest.h> <algorithm> <atomic> <cstdint> <filesystem> <fstream> <functional> <limits> <map>
    <memory> <ostream> <random> <sstream> <stdexcept> <string> <string_view> <thread> <type_traits> <utility> <vector>)
endif()

# vyx_add_test(NAME SOURCES...): one test program that reaches the library's internals as well as its exports.
# Tests of what several threads may use at once carry the label "threads" and are built by the target vyx_threads_tests:
# the thread sanitizer runs those.
function(vyx_add_test iName)
  cmake_parse_arguments(TEST "THREADS" "" "SOURCES" ${ARGN})
  add_executable(${iName} ${TEST_SOURCES})
  target_link_libraries(${iName} PRIVATE vyx_internals vyx_test_support GTest::gmock GTest::gtest_main)
  target_compile_options(${iName} PRIVATE ${VYX_TEST_OPTIONS})
  if(VYX_PRECOMPILE_TEST_HEADERS)
    target_precompile_headers(${iName} REUSE_FROM vyx_test_headers)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      # These releases see overflows in std::string's own copies when its header comes precompiled.
      target_compile_options(${iName} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
    endif()
  endif()
  # One label a test: gtest_discover_tests takes a list of them apart.
  set(label unit)
  if(TEST_THREADS)
    set(label threads)
    add_dependencies(vyx_threads_tests ${iName})
  endif()
  gtest_discover_tests(${iName} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS ${label} TIMEOUT 300)
endfunction()

# vyx_add_caller_test(NAME SOURCES...): one test program that uses the shared library as callers do, by its exported
# headers alone, and stands beside it where the host looks for it there.
function(vyx_add_caller_test iName)
  cmake_parse_arguments(TEST "" "" "SOURCES" ${ARGN})
  add_executable(${iName} ${TEST_SOURCES})
  target_link_libraries(${iName} PRIVATE vyx_settings VYXInfUtils::VYXInfUtils GTest::gtest_main)
  target_compile_options(${iName} PRIVATE ${VYX_TEST_OPTIONS})
  set_target_properties(${iName} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${VYX_PROGRAM_FOLDER}")
  gtest_discover_tests(${iName} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS unit TIMEOUT 300)
endfunction()

# vyx_use_programs(NAME): the test starts programs. It stands beside them, and knows the path of the test's own child
# program by a macro.
function(vyx_use_programs iName)
  add_dependencies(${iName} test_child VYXInfParentProcessKiller)
  set_target_properties(${iName} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${VYX_PROGRAM_FOLDER}")
  target_compile_definitions(${iName} PRIVATE VYX_TEST_CHILD="$<TARGET_FILE:test_child>")
endfunction()
