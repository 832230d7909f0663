# What an installed tree holds beside programs, modules and tables: the library, its headers and its CMake package.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Corvane)
install(TARGETS corvane corvane_headers EXPORT CorvaneTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/corvane ${PROJECT_BINARY_DIR}/include/corvane
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# Empty, so that a person who copies a rule module there does not name a file after the folder.
install(DIRECTORY DESTINATION ${CMAKE_INSTALL_LIBDIR}/rules)
install(EXPORT CorvaneTargets NAMESPACE Corvane:: DESTINATION ${package_folder})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/CorvaneConfig.cmake.in
    ${PROJECT_BINARY_DIR}/CorvaneConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CorvaneConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/CorvaneConfig.cmake
    ${PROJECT_BINARY_DIR}/CorvaneConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/CorvaneRuleModule.cmake
    DESTINATION ${package_folder})

# The registration of script host and engines, where the library reads the machine's registry by default.
get_property(engine_keys GLOBAL PROPERTY CORVANE_ENGINE_KEYS)
configure_file(${PROJECT_SOURCE_DIR}/modules/scripthost/machine.reg.in ${PROJECT_BINARY_DIR}/registry/machine.reg @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/registry/machine.reg DESTINATION registry)
