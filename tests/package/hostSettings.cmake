# Configures a host that has the project in a folder of any name, with settings that hosts and distributions have for everything
# that they build.
file(REMOVE_RECURSE "${WORK}")
include("${CMAKE_CURRENT_LIST_DIR}/step.cmake")
file(MAKE_DIRECTORY "${WORK}")
file(CREATE_LINK "${PROJECT}" "${WORK}/c++ (mine)" SYMBOLIC)
step("${CMAKE_COMMAND}" -G Ninja -S "${SOURCE}" -B "${WORK}/build" "-DTESSALUNA_PROJECT=${WORK}/c++ (mine)"
     "-DCMAKE_CXX_COMPILER=${COMPILER}"
     -DBUILD_SHARED_LIBS=ON -DTESSALUNA_QT=OFF -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DCMAKE_UNITY_BUILD=ON
     -DCMAKE_CXX_VISIBILITY_PRESET=hidden -DCMAKE_VISIBILITY_INLINES_HIDDEN=ON
     -DCMAKE_INSTALL_LIBDIR=/elsewhere/libraries -DCMAKE_INSTALL_INCLUDEDIR=/elsewhere/headers)

file(STRINGS "${WORK}/build/compile_commands.json" commands REGEX "\"command\"")
list(LENGTH commands count)
set(joined ${commands})
list(FILTER joined INCLUDE REGEX "unity_[0-9]")
if(joined)
  list(GET joined 0 command)
  message(FATAL_ERROR "sources that have the same names in them are joined: ${command}")
endif()
list(FILTER commands INCLUDE REGEX "-fvisibility=hidden|-fvisibility-inlines-hidden")
if(commands OR count EQUAL 0)
  list(APPEND commands "no command at all")
  list(GET commands 0 command)
  message(FATAL_ERROR "a shared library exports nothing: ${command}")
endif()

file(READ "${WORK}/build/tessaluna/TessalunaUIKit-Raster.pc" package)
if(NOT package MATCHES "\nlibdir=/elsewhere/libraries\nincludedir=/elsewhere/headers\n")
  message(FATAL_ERROR "pkg-config does not find what is installed elsewhere:\n${package}")
endif()
