# Configures a host that has the project as a folder of its own, and looks at the targets that came with it.
file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND "${CMAKE_COMMAND}" -G Ninja -S "${SOURCE}" -B "${WORK}" "-DTESSALUNA_PROJECT=${PROJECT}"
                        "-DCMAKE_CXX_COMPILER=${COMPILER}"
                RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "configuring the host ended with ${status}:\n${output}")
endif()
if(NOT output MATCHES "target TessalunaUIKit STATIC_LIBRARY")
  message(FATAL_ERROR "the library is not among the targets:\n${output}")
endif()
if(output MATCHES "target [^\n]* EXECUTABLE")
  message(FATAL_ERROR "a program came with the library:\n${output}")
endif()
# A host may have any name but those with the library's own in front.
string(REGEX MATCHALL "target [^\n]+" targets "${output}")
list(FILTER targets EXCLUDE REGEX "^target ([Tt]essaluna)")
if(targets)
  message(FATAL_ERROR "targets that the host may have itself came with the library: ${targets}")
endif()
if(output MATCHES "target [^\n]*[Gg]allery")
  message(FATAL_ERROR "the gallery came with the library:\n${output}")
endif()
