# The installed package: find_package(TessalunaUIKit COMPONENTS ...) defines the targets under TessalunaUIKit::, and pkg-config
# has the same libraries under the same names.
include(CMakePackageConfigHelpers)

# The pkg-config package of each outside library, by its target here. A program that links static libraries needs these
# packages too.
set(pkgconfig_of_PkgConfig_UTF8PROC libutf8proc)
set(pkgconfig_of_Qt6_Widgets "Qt6Widgets >= 6.4")

# Packages still work after the tree that they are in is moved, unless a folder was given as a whole path.
file(RELATIVE_PATH path_to_prefix "${tessaluna_libdir}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
cmake_path(APPEND libdir "\${prefix}" "${CMAKE_INSTALL_LIBDIR}")
cmake_path(APPEND includedir "\${prefix}" "${CMAKE_INSTALL_INCLUDEDIR}")
get_property(libraries GLOBAL PROPERTY TESSALUNA_LIBRARIES)
set(names)
set(component_table)
foreach(library IN LISTS libraries)
  get_target_property(name ${library} TESSALUNA_NAME)
  get_target_property(needs ${library} TESSALUNA_NEEDS)
  get_target_property(outside ${library} TESSALUNA_OUTSIDE)
  if(BUILD_SHARED_LIBS)
    # Only what the installed headers include.
    list(FILTER outside INCLUDE REGEX "^Qt")
  endif()
  list(APPEND names "${name}")
  string(APPEND component_table "set(_tessaluna_needs_${name} ${needs})\nset(_tessaluna_outside_${name} ${outside})\n")

  set(own ${needs})
  list(TRANSFORM own PREPEND "TessalunaUIKit-")
  set(others)
  foreach(target IN LISTS outside)
    string(REPLACE "::" "_" key "${target}")
    list(APPEND others "${pkgconfig_of_${key}}")
  endforeach()
  set(required ${own} ${others})
  list(JOIN required ", " required)
  configure_file("${PROJECT_SOURCE_DIR}/cmake/library.pc.in" "${PROJECT_BINARY_DIR}/TessalunaUIKit-${name}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/TessalunaUIKit-${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
endforeach()

configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/TessalunaUIKitConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/TessalunaUIKitConfig.cmake" INSTALL_DESTINATION "${TESSALUNA_PACKAGE_DIR}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/TessalunaUIKitConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/TessalunaUIKitConfig.cmake" "${PROJECT_BINARY_DIR}/TessalunaUIKitConfigVersion.cmake"
        DESTINATION "${TESSALUNA_PACKAGE_DIR}")

# All that is installed, and none of the tests: what a build needs before `cmake --install`.
add_custom_target(tessaluna_installed)
add_dependencies(tessaluna_installed ${libraries})
foreach(target IN ITEMS tessaluna-artwork tessaluna-gallery tessaluna_icons)
  if(TARGET ${target})
    add_dependencies(tessaluna_installed ${target})
  endif()
endforeach()
