# How every target of the project compiles, and how the project defines a library.

# Flags that the project's own code needs and its users do not.
add_library(tessaluna_build_flags INTERFACE)
target_compile_features(tessaluna_build_flags INTERFACE cxx_std_20)
# A fused multiply-add would move a vertex by one unit in the last place, and pictures and expected texts with it.
# One kind of machine code for libraries and programs, so that they can share precompiled headers.
target_compile_options(tessaluna_build_flags INTERFACE -Wall -Wextra -Wpedantic -ffp-contract=off -fPIC)
if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
  # What such a processor computes with otherwise has more digits than a double.
  target_compile_options(tessaluna_build_flags INTERFACE -msse2 -mfpmath=sse)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This compiler warns of overlapping and endless copies in the plain sum of two strings.
  target_compile_options(tessaluna_build_flags INTERFACE -Wno-restrict -Wno-stringop-overflow)
endif()
if(BUILD_SHARED_LIBS)
  # library.map says what is exported, whatever a surrounding project has set for its own libraries. Where it has set nothing,
  # there is no flag.
  set(CMAKE_VISIBILITY_INLINES_HIDDEN OFF)
  if(CMAKE_CXX_VISIBILITY_PRESET)
    set(CMAKE_CXX_VISIBILITY_PRESET default)
  endif()
endif()
# Sources that are joined would have functions of the same names. The tests join theirs by tests/batches.py.
set(CMAKE_UNITY_BUILD OFF)
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  target_link_options(tessaluna_build_flags INTERFACE -fuse-ld=mold)
endif()
if(TESSALUNA_SANITIZE)
  # The group "undefined" does not include casts of numbers that no int can hold.
  target_compile_options(tessaluna_build_flags INTERFACE -fsanitize=address,undefined,float-cast-overflow
                                                         -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tessaluna_build_flags INTERFACE -fsanitize=address,undefined)
endif()

if(TESSALUNA_FUZZ)
  target_compile_options(tessaluna_build_flags INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(tessaluna_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Sets the result to those of the headers that the remaining arguments are or include, directly or through others.
function(tessaluna_reached_headers result headers)
  set(reached)
  set(waiting ${ARGN})
  while(waiting)
    list(POP_FRONT waiting header)
    if("${header}" IN_LIST reached OR NOT "${header}" IN_LIST headers)
      continue()
    endif()
    list(APPEND reached "${header}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
    file(STRINGS "${header}" includes REGEX "^#include \"")
    list(TRANSFORM includes REPLACE "^#include \"([^\"]*)\".*" "${PROJECT_SOURCE_DIR}/\\1")
    list(APPEND waiting ${includes})
  endwhile()
  set(${result} ${reached} PARENT_SCOPE)
endfunction()

# tessaluna_library(NAME FOLDERS dir... [EXCEPT path...] [ALSO path...] [PUBLIC_HEADERS header...] [LINKS target...]
#                   [PRIVATE_LINKS target...])
# Makes the target TessalunaNAME, with the alias TessalunaUIKit::NAME: a library of all sources below FOLDERS, without the files
# and folders of EXCEPT, and with the files of ALSO; both name files without their endings. It installs PUBLIC_HEADERS, as users
# include them, and the headers of the library that these include; without PUBLIC_HEADERS, all headers below the folders. LINKS
# names libraries of the project without their namespace, or outside targets.
function(tessaluna_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FOLDERS;EXCEPT;ALSO;PUBLIC_HEADERS;LINKS;PRIVATE_LINKS")
  set(sources)
  set(headers)
  foreach(folder IN LISTS arg_FOLDERS)
    file(GLOB_RECURSE folder_sources RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${folder}/*.cpp")
    file(GLOB_RECURSE folder_headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${folder}/*.h")
    list(APPEND sources ${folder_sources})
    list(APPEND headers ${folder_headers})
  endforeach()
  foreach(path IN LISTS arg_EXCEPT)
    list(FILTER sources EXCLUDE REGEX "^${path}[/.]")
    list(FILTER headers EXCLUDE REGEX "^${path}[/.]")
  endforeach()
  foreach(path IN LISTS arg_ALSO)
    list(APPEND sources "${path}.cpp")
    list(APPEND headers "${path}.h")
  endforeach()
  list(TRANSFORM sources PREPEND "${PROJECT_SOURCE_DIR}/")
  list(TRANSFORM headers PREPEND "${PROJECT_SOURCE_DIR}/")

  if(NOT sources)
    message(STATUS "${name} is left out: no sources below ${arg_FOLDERS}")
    return()
  endif()
  set(target "Tessaluna${name}")
  add_library(${target} ${sources})
  add_library(TessalunaUIKit::${name} ALIAS ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME "${name}" POSITION_INDEPENDENT_CODE ON DEFINE_SYMBOL ""
    VERSION "${PROJECT_VERSION}" SOVERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
  if("Qt6::Widgets" IN_LIST arg_LINKS)
    target_precompile_headers(${target} REUSE_FROM tessaluna_qt_headers)
  else()
    target_precompile_headers(${target} REUSE_FROM tessaluna_headers)
  endif()
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_include_directories(${target} PUBLIC "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
                                            "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
  target_link_libraries(${target} PRIVATE "$<BUILD_INTERFACE:tessaluna_build_flags>")
  if(BUILD_SHARED_LIBS AND UNIX AND NOT APPLE)
    set(map "${PROJECT_SOURCE_DIR}/cmake/library.map")
    target_link_options(${target} PRIVATE "LINKER:--version-script=${map}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${map}")
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Loading a point's two numbers at once, right after storing them one by one, waits until both have reached the cache:
    # making a stroke would take twice as long.
    target_compile_options(${target} PRIVATE -fno-tree-slp-vectorize)
  endif()
  foreach(link IN LISTS arg_LINKS)
    if(TARGET TessalunaUIKit::${link})
      target_link_libraries(${target} PUBLIC TessalunaUIKit::${link})
    else()
      target_link_libraries(${target} PUBLIC ${link})
    endif()
  endforeach()
  # Users need the private links only at link time, because no header includes anything of them.
  foreach(link IN LISTS arg_PRIVATE_LINKS)
    target_link_libraries(${target} PRIVATE ${link})
  endforeach()

  set_property(GLOBAL APPEND PROPERTY TESSALUNA_LIBRARIES ${target})
  if(arg_PUBLIC_HEADERS)
    list(TRANSFORM arg_PUBLIC_HEADERS PREPEND "${PROJECT_SOURCE_DIR}/")
    tessaluna_reached_headers(public_headers "${headers}" ${arg_PUBLIC_HEADERS})
    set(private_headers ${headers})
    list(REMOVE_ITEM private_headers ${public_headers})
  else()
    set(public_headers ${headers})
    set(private_headers)
  endif()
  set_target_properties(${target} PROPERTIES TESSALUNA_PUBLIC_HEADERS "${public_headers}"
                                             TESSALUNA_PRIVATE_HEADERS "${private_headers}"
                                             TESSALUNA_PRIVATE_LINKS "${arg_PRIVATE_LINKS}")
  # One file of targets per library, so that a package can contain some of them.
  install(TARGETS ${target} EXPORT TessalunaUIKit${name} ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
          LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}")
  install(EXPORT TessalunaUIKit${name} NAMESPACE TessalunaUIKit:: DESTINATION "${TESSALUNA_PACKAGE_DIR}")
  set(needs ${arg_LINKS})
  list(FILTER needs EXCLUDE REGEX "::")
  set(outside ${arg_LINKS} ${arg_PRIVATE_LINKS})
  list(FILTER outside INCLUDE REGEX "^[A-Za-z0-9]+::")
  set_target_properties(${target} PROPERTIES TESSALUNA_NAME "${name}" TESSALUNA_NEEDS "${needs}" TESSALUNA_OUTSIDE "${outside}")
  foreach(header IN LISTS public_headers)
    cmake_path(RELATIVE_PATH header BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE relative)
    cmake_path(GET relative PARENT_PATH folder)
    install(FILES "${header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}")
  endforeach()
endfunction()
