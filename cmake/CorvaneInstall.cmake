# What an installed tree holds beside programs, modules and tables: the library, its headers, its CMake package and the
# file of pkg-config.

include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/Corvane)
install(TARGETS corvane corvane_headers EXPORT CorvaneTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_COMPONENT development
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/corvane ${PROJECT_BINARY_DIR}/include/corvane
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
# Empty, so that a person who copies a rule module there does not name a file after the folder.
install(DIRECTORY DESTINATION ${CMAKE_INSTALL_LIBDIR}/rules)
install(EXPORT CorvaneTargets NAMESPACE Corvane:: DESTINATION ${package_folder} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/CorvaneConfig.cmake.in
    ${PROJECT_BINARY_DIR}/CorvaneConfig.cmake INSTALL_DESTINATION ${package_folder} PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/CorvaneConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/CorvaneConfig.cmake
    ${PROJECT_BINARY_DIR}/CorvaneConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/CorvaneRuleModule.cmake
    ${PROJECT_SOURCE_DIR}/cmake/CorvaneStringTables.cmake
    DESTINATION ${package_folder} COMPONENT development)
configure_file(${PROJECT_SOURCE_DIR}/cmake/corvane.pc.in ${PROJECT_BINARY_DIR}/corvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/corvane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
