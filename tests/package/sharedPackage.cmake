# Installs the libraries that need no Qt as shared ones, and builds a program against them. They are compiled with the flags of
# the static ones in a folder beside theirs, so that the compiler cache gives what was compiled for those.
set(build "${BUILD}-shared")
set(prefix "${WORK}/prefix")
file(REMOVE_RECURSE "${WORK}" "${build}")

include("${CMAKE_CURRENT_LIST_DIR}/step.cmake")

step("${CMAKE_COMMAND}" -G Ninja -S "${PROJECT}" -B "${build}" "-DCMAKE_CXX_COMPILER=${COMPILER}"
     "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}" "${FLAGS}" -DBUILD_SHARED_LIBS=ON
     -DTESSALUNA_TESTS=OFF -DTESSALUNA_PROGRAMS=OFF -DTESSALUNA_QT=OFF)
step("${CMAKE_COMMAND}" --build "${build}")
step("${CMAKE_COMMAND}" --install "${build}" --prefix "${prefix}")
file(REMOVE_RECURSE "${build}")

# Each library's file and its name for the loader say the version.
file(GLOB_RECURSE libraries "${prefix}/libTessaluna*.so.${VERSION}")
list(LENGTH libraries count)
if(count LESS 9)
  message(FATAL_ERROR "${count} libraries end with .so.${VERSION}: ${libraries}")
endif()
file(GLOB_RECURSE archives "${prefix}/*.a")
if(archives)
  message(FATAL_ERROR "static libraries were installed: ${archives}")
endif()
string(REGEX MATCH "^[0-9]+\\.[0-9]+" abi "${VERSION}")
foreach(library IN LISTS libraries)
  cmake_path(GET library FILENAME file)
  string(REGEX REPLACE "\\.so\\..*" "" name "${file}")
  execute_process(COMMAND readelf -d "${library}" OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
  if(NOT dynamic MATCHES "SONAME[^\n]*\\[${name}\\.so\\.${abi}\\]")
    message(FATAL_ERROR "${file} is not ${name}.so.${abi} to the loader:\n${dynamic}")
  endif()
  # Nothing but names of the two namespaces is seen from outside.
  execute_process(COMMAND nm -D --defined-only --format=just-symbols "${library}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
  if(NOT symbols)
    message(FATAL_ERROR "${file} shows no symbol")
  endif()
  list(FILTER symbols EXCLUDE REGEX "^_Z[A-Za-z]*[0-9_n]*N?K?R?O?(9tessaluna|14TessalunaUIKit)")
  if(symbols)
    message(FATAL_ERROR "${file} shows symbols that are not its own: ${symbols}")
  endif()
endforeach()

# A program finds them by CMake.
step("${CMAKE_COMMAND}" -G Ninja -S "${CMAKE_CURRENT_LIST_DIR}/outside" -B "${WORK}/build" "-DCMAKE_PREFIX_PATH=${prefix}"
     "-DCMAKE_CXX_COMPILER=${COMPILER}" -DCMAKE_BUILD_TYPE=Release -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON)
step("${CMAKE_COMMAND}" --build "${WORK}/build")
# They are linked to what their sources use. Who links them needs none of it.
execute_process(COMMAND "${CMAKE_COMMAND}" -G Ninja -S "${CMAKE_CURRENT_LIST_DIR}/components" -B "${WORK}/components"
                        "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${COMPILER}" -DASKED=Ready
                        -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON
                OUTPUT_VARIABLE output ERROR_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
if(NOT output MATCHES "found: TRUE targets: Graphics Platform StyleKit UIKit Ready\\.")
  message(FATAL_ERROR "shared libraries need what only their sources use:\n${output}")
endif()
step("${WORK}/build/outside")
execute_process(COMMAND readelf -d "${WORK}/build/outside" OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
if(NOT dynamic MATCHES "NEEDED[^\n]*\\[libTessalunaStyleKit\\.so\\.${abi}\\]")
  message(FATAL_ERROR "the program is not linked to the shared artwork:\n${dynamic}")
endif()
