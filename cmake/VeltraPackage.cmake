include(CMakePackageConfigHelpers)

# Installs the CMake package of a library: its exported targets, in the namespace veltra::, and the
# files that find_package(<name>) looks for.
function(veltra_install_package name)
    set(folder "${CMAKE_INSTALL_LIBDIR}/cmake/${name}")
    install(EXPORT ${name}_targets NAMESPACE veltra:: DESTINATION "${folder}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${name}Config.cmake.in"
        "${PROJECT_BINARY_DIR}/cmake/${name}Config.cmake" INSTALL_DESTINATION "${folder}")
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/cmake/${name}ConfigVersion.cmake"
        COMPATIBILITY SameMinorVersion)
    install(FILES
        "${PROJECT_BINARY_DIR}/cmake/${name}Config.cmake"
        "${PROJECT_BINARY_DIR}/cmake/${name}ConfigVersion.cmake"
        DESTINATION "${folder}")
endfunction()
