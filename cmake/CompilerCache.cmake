# ccache makes a second build of the same sources cheap; the project builds the same without it. Paths are left as they
# are: failure traces record the source's place.
find_program(VYX_CCACHE ccache)
if(VYX_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${VYX_CCACHE}")
endif()
