# Installs the built project into a folder of its own, builds the outside programs against that, and runs them. The source
# and the build folder are named nowhere: whatever the programs need must have been installed.
file(REMOVE_RECURSE "${WORK}")
set(prefix "${WORK}/prefix")

function(step)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV}\nended with ${status}:\n${output}")
  endif()
endfunction()

step("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${prefix}")

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

# It clicks on a view of its own and says whether that was heard.
if(QT_EXAMPLE)
  file(COPY "${QT_EXAMPLE}" DESTINATION "${WORK}")
  build("${WORK}/qt-embed" "${WORK}/qt-embed-build")
  set(ENV{QT_QPA_PLATFORM} offscreen)
  step("${WORK}/qt-embed-build/qt-embed" --picture "${WORK}/qt-embed.png")
  if(NOT EXISTS "${WORK}/qt-embed.png")
    message(FATAL_ERROR "qt-embed wrote no picture")
  endif()
endif()

step("${prefix}/bin/tessaluna-artwork" render drawPlay -o "${WORK}/play.png")
if(NOT EXISTS "${WORK}/play.png")
  message(FATAL_ERROR "the installed tessaluna-artwork wrote no picture")
endif()
