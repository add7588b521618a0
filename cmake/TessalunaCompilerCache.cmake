# Compiles through ccache if it is installed, so that another clone of the same sources builds in minutes less.
# Include it before any target, because a target takes its launcher when it is created.
option(TESSALUNA_CCACHE "Compile through ccache if it is installed" ON)
if(NOT TESSALUNA_CCACHE OR CMAKE_CXX_COMPILER_LAUNCHER)
  return()
endif()
find_program(CCACHE_PROGRAM ccache)
if(NOT CCACHE_PROGRAM)
  return()
endif()

# ccache makes paths below the source relative to the folder that the compiler runs in, so that clones in different places
# share what they compiled. It caches precompiled headers only if it ignores their defines and time macros.
set(CMAKE_CXX_COMPILER_LAUNCHER
    env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=true
    "CCACHE_SLOPPINESS=pch_defines,time_macros" "${CCACHE_PROGRAM}")
