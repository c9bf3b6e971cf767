# What `cmake --install` puts where: headers, library, CMake package, pkg-config file, tool, man page, completions.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(quarn_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/QuarnScreen")
set(quarn_generated_dir "${PROJECT_BINARY_DIR}/install")

# Headers. The folders called Detail are private.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/Source/QuarnScreen" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
        FILES_MATCHING PATTERN "*.h" PATTERN Detail EXCLUDE)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/Framework/CXX/Common" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
        FILES_MATCHING PATTERN "*.h" PATTERN Detail EXCLUDE)

# What no header names is a caller's business only where the library is static.
set(QUARN_PRIVATE_PACKAGES "")
set(QUARN_PRIVATE_MODULES "")
set(QUARN_PRIVATE_LIBS "")
get_target_property(quarn_library_type QuarnScreen TYPE)
if(quarn_library_type STREQUAL STATIC_LIBRARY)
    set(QUARN_PRIVATE_PACKAGES "find_dependency(OpenSSL COMPONENTS Crypto)\nfind_dependency(embree 3)")
    set(QUARN_PRIVATE_MODULES "libcrypto")
    set(QUARN_PRIVATE_LIBS "-lembree3") # it brings no pkg-config file
endif()

# Library and CMake package.
install(TARGETS QuarnScreen EXPORT QuarnScreenTargets)
install(EXPORT QuarnScreenTargets NAMESPACE QuarnScreen:: DESTINATION "${quarn_package_dir}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/QuarnScreenConfig.cmake.in"
                              "${quarn_generated_dir}/QuarnScreenConfig.cmake"
                              INSTALL_DESTINATION "${quarn_package_dir}"
                              NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
# Before version 1.0 a minor release may change what a caller sees.
write_basic_package_version_file("${quarn_generated_dir}/QuarnScreenConfigVersion.cmake"
                                 COMPATIBILITY SameMinorVersion)
install(FILES "${quarn_generated_dir}/QuarnScreenConfig.cmake"
              "${quarn_generated_dir}/QuarnScreenConfigVersion.cmake"
        DESTINATION "${quarn_package_dir}")

# pkg-config. The prefix is relative to the file, so that an installed tree can be moved.
file(RELATIVE_PATH QUARN_PREFIX_FROM_PKGCONFIG
     "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file("${CMAKE_CURRENT_LIST_DIR}/quarnscreen.pc.in" "${quarn_generated_dir}/quarnscreen.pc" @ONLY)
install(FILES "${quarn_generated_dir}/quarnscreen.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

if(TARGET quarnscreen)
    include(QuarnInstallTool)
endif()
