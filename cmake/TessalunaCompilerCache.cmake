# Compiles through ccache where it is installed, so that another clone of sources that were built before takes minutes less.
# Included before any target, because a target takes its launcher when it is made.
option(TESSALUNA_CCACHE "Compile through ccache where it is installed" ON)
if(NOT TESSALUNA_CCACHE OR CMAKE_CXX_COMPILER_LAUNCHER)
  return()
endif()
find_program(CCACHE_PROGRAM ccache)
if(NOT CCACHE_PROGRAM)
  return()
endif()

# Paths below the source are made relative to the folder that the compiler runs in, so that clones share what they compiled
# wherever they are. Precompiled headers are cached only by a ccache that overlooks their defines and time macros.
set(CMAKE_CXX_COMPILER_LAUNCHER
    env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=true
    "CCACHE_SLOPPINESS=pch_defines,time_macros" "${CCACHE_PROGRAM}")
