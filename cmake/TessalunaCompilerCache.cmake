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
set(launcher
    env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=true
    "CCACHE_SLOPPINESS=pch_defines,time_macros" "${CCACHE_PROGRAM}")

# Where it cannot write its folder, as in a home that is read-only, ccache fails instead of compiling.
set(trial "${PROJECT_BINARY_DIR}/CMakeFiles/compilerCacheTrial")
file(WRITE "${trial}.cpp" "int trial = 0;\n")
execute_process(COMMAND ${launcher} "${CMAKE_CXX_COMPILER}" -c "${trial}.cpp" -o "${trial}.o"
                RESULT_VARIABLE trial_result OUTPUT_QUIET ERROR_VARIABLE trial_error)
if(trial_result EQUAL 0)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
else()
  message(STATUS "Compiling without ccache, which fails: ${trial_error}")
endif()
