# Installs the built project into a folder of its own, builds the outside programs against that, and runs them. The source
# and the build folder are named nowhere: whatever the programs need must have been installed.
file(REMOVE_RECURSE "${WORK}")
set(prefix "${WORK}/prefix")

include("${CMAKE_CURRENT_LIST_DIR}/step.cmake")

step("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${prefix}")
include("${CMAKE_CURRENT_LIST_DIR}/installedHeaders.cmake")

# Headers that name the source tree, or targets that do, would work here and nowhere else.
file(STRINGS "${BUILD}/CMakeCache.txt" home REGEX "^CMAKE_HOME_DIRECTORY:")
string(REGEX REPLACE "^[^=]*=" "" home "${home}")
file(GLOB_RECURSE installed "${prefix}/*.cmake")
foreach(file IN LISTS installed)
  file(READ "${file}" content)
  string(FIND "${content}" "${home}/" place)
  if(NOT place EQUAL -1)
    message(FATAL_ERROR "${file} names the source tree ${home}")
  endif()
endforeach()

function(build source folder)
  step("${CMAKE_COMMAND}" -G Ninja -S "${source}" -B "${folder}" "-DCMAKE_PREFIX_PATH=${prefix}"
       "-DCMAKE_CXX_COMPILER=${COMPILER}" -DCMAKE_BUILD_TYPE=Release)
  step("${CMAKE_COMMAND}" --build "${folder}")
endfunction()

build("${SOURCE}" "${WORK}/build")
step("${WORK}/build/outside")

# Who asks for the artwork needs no library that only others need, and is told what a component lacks.
function(ask wanted)
  execute_process(COMMAND "${CMAKE_COMMAND}" -G Ninja -S "${SOURCE}/../components" -B "${WORK}/components-build" --fresh
                          "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${COMPILER}" -DCMAKE_BUILD_TYPE=Release
                          -DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON -DCMAKE_DISABLE_FIND_PACKAGE_nlohmann_json=ON ${ARGN}
                  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  # Messages are broken into lines.
  string(REGEX REPLACE "[ \n]+" " " output "${output}")
  if(NOT output MATCHES "${wanted}")
    message(FATAL_ERROR "${ARGN}\nended with ${status}, and without '${wanted}':\n${output}")
  endif()
  set(status ${status} PARENT_SCOPE)
endfunction()
ask("found: TRUE targets: Graphics StyleKit Raster\\." "-DASKED=StyleKit Raster" -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON)
step("${CMAKE_COMMAND}" --build "${WORK}/components-build")
step("${WORK}/components-build/artwork")
ask("found: TRUE targets: Graphics Platform StyleKit Raster\\." -DASKED=StyleKit -DOPTIONAL=Qt)
ask("found: TRUE targets: Graphics Platform StyleKit UIKit Ready\\." -DASKED=Ready)
ask("found: FALSE" -DASKED=Qt)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "a package that is optional ended the configuration")
endif()
ask("found: FALSE" -DASKED=UIKit -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "a package that lacks a library of somebody else's ended the configuration")
endif()
ask("UIKit needs pkg-config to find libutf8proc" -DASKED=UIKit -DREQUIRED=REQUIRED -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON)
ask("Qt needs Qt 6.4 or newer" -DASKED=Qt -DREQUIRED=REQUIRED)
ask("Gtk is not a component\\. The components are Graphics, Platform" -DASKED=Gtk -DREQUIRED=REQUIRED)
file(REMOVE_RECURSE "${WORK}/without-svg")
file(COPY "${prefix}/" DESTINATION "${WORK}/without-svg")
file(GLOB_RECURSE svg "${WORK}/without-svg/*TessalunaUIKitSvg*.cmake")
file(REMOVE ${svg})
ask("Svg needs the library itself, which is not installed" -DASKED=Svg -DREQUIRED=REQUIRED
    "-DCMAKE_PREFIX_PATH=${WORK}/without-svg")

# pkg-config knows them as well.
file(GLOB_RECURSE package "${prefix}/TessalunaUIKit-Raster.pc")
cmake_path(GET package PARENT_PATH packages)
set(ENV{PKG_CONFIG_PATH} "${packages}")
execute_process(COMMAND pkg-config --cflags --libs TessalunaUIKit-StyleKit TessalunaUIKit-Raster
                OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags)
step("${COMPILER}" -std=c++20 "${SOURCE}/main.cpp" -o "${WORK}/with-pkg-config" ${flags} "-Wl,-rpath,${packages}/..")
step("${WORK}/with-pkg-config")

# Each clicks on a view of its own and says whether that had its effect.
if(QT_EXAMPLES)
  set(ENV{QT_QPA_PLATFORM} offscreen)
  foreach(example qt-embed player)
    file(COPY "${QT_EXAMPLES}/${example}" DESTINATION "${WORK}")
    build("${WORK}/${example}" "${WORK}/${example}-build")
    step("${WORK}/${example}-build/${example}" --picture "${WORK}/${example}.png")
    if(NOT EXISTS "${WORK}/${example}.png")
      message(FATAL_ERROR "${example} wrote no picture")
    endif()
  endforeach()
endif()

step("${prefix}/bin/tessaluna-artwork" render drawPlay -o "${WORK}/play.png")
if(NOT EXISTS "${WORK}/play.png")
  message(FATAL_ERROR "the installed tessaluna-artwork wrote no picture")
endif()
