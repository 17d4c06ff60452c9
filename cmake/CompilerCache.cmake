# ccache makes a second build of the same sources cheap; the project builds the same without it.
find_program(VYX_CCACHE ccache)
if(VYX_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
    "CCACHE_BASEDIR=${CMAKE_CURRENT_SOURCE_DIR}" CCACHE_SLOPPINESS=pch_defines,time_macros "${VYX_CCACHE}")
endif()
