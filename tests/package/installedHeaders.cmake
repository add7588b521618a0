# All installed headers in one source, with the warnings that careful hosts switch on, as errors, and among the host's own
# headers, where compilers do warn. Needs `prefix`, COMPILER, WORK and the function `step`.
set(warnings -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
set(include_folder "${prefix}/include")
file(GLOB_RECURSE headers RELATIVE "${include_folder}" "${include_folder}/tessaluna/*.h")
set(qt_headers ${headers})
list(FILTER qt_headers INCLUDE REGEX "/backends/qt/")
list(FILTER headers EXCLUDE REGEX "/backends/qt/")
if(NOT headers)
  message(FATAL_ERROR "no headers are installed")
endif()

set(qt_flags)
if(qt_headers)
  execute_process(COMMAND pkg-config --cflags Qt6Widgets OUTPUT_VARIABLE qt_flags OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "(^| )-I *" "\\1-isystem" qt_flags "${qt_flags}")
  separate_arguments(qt_flags)
endif()

# check_headers(NAME FLAGS flag... HEADERS header...)
function(check_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FLAGS;HEADERS")
  list(TRANSFORM arg_HEADERS REPLACE "(.+)" "#include \"\\1\"\n")
  list(JOIN arg_HEADERS "" includes)
  file(WRITE "${WORK}/${name}.cpp" "${includes}")
  foreach(compiler IN LISTS compilers)
    step("${compiler}" -std=c++20 -fPIC -fsyntax-only "-I${include_folder}" ${warnings} ${arg_FLAGS} "${WORK}/${name}.cpp")
  endforeach()
endfunction()

# The one that built the package, and clang++ where there is one.
set(compilers "${COMPILER}")
find_program(CLANG clang++)
if(CLANG)
  list(APPEND compilers "${CLANG}")
endif()
check_headers(headers HEADERS ${headers})
if(qt_headers)
  check_headers(qt_headers HEADERS ${qt_headers} FLAGS ${qt_flags})
endif()

# An older language is refused in one line that comes before whatever else the compiler cannot read. Hosts begin with any of
# these.
foreach(header IN ITEMS tessaluna/uikit/TessalunaUIKit.h tessaluna/ready/TessalunaReady.h
                        tessaluna/uikit/stylekit/TessalunaStyleKit.h tessaluna/backends/raster/Bitmap.h)
  file(WRITE "${WORK}/old.cpp" "#include \"${header}\"\n")
  foreach(compiler IN LISTS compilers)
    execute_process(COMMAND "${compiler}" -std=c++17 -fsyntax-only "-I${include_folder}" "${WORK}/old.cpp"
                    RESULT_VARIABLE status ERROR_VARIABLE errors)
    string(REGEX MATCH "error:[^\n]*" first "${errors}")
    if(status EQUAL 0 OR NOT first MATCHES "error: (#error )?\"?TessalunaUIKit needs C\\+\\+20 or newer")
      message(FATAL_ERROR "${compiler} -std=c++17 does not begin with the refusal of ${header}:\n${errors}")
    endif()
  endforeach()
endforeach()
