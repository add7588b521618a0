# The installed package: find_package(TessalunaUIKit) gives the targets under TessalunaUIKit::.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/TessalunaUIKit")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/TessalunaUIKitConfig.cmake.in"
                              "${PROJECT_BINARY_DIR}/TessalunaUIKitConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/TessalunaUIKitConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(EXPORT TessalunaUIKitTargets NAMESPACE TessalunaUIKit:: DESTINATION "${package_dir}")
install(FILES "${PROJECT_BINARY_DIR}/TessalunaUIKitConfig.cmake" "${PROJECT_BINARY_DIR}/TessalunaUIKitConfigVersion.cmake"
        DESTINATION "${package_dir}")
