# Debian packages, a package for each component, by `cpack` in the build folder. The tree stays one folder, and what the
# system looks for elsewhere leads there: CorvaneSystemFiles.cmake.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvane)
set(CPACK_PACKAGE_VENDOR "Corvane Framework")
# As Debian's tools name who packages.
set(maintainer "Corvane Framework <corvane@packages.invalid>")
if(DEFINED ENV{DEBEMAIL})
    set(maintainer "$ENV{DEBFULLNAME} <$ENV{DEBEMAIL}>")
endif()
set(CORVANE_PACKAGE_MAINTAINER ${maintainer} CACHE STRING "Whom the packages name as their maintainer: NAME <ADDRESS>")
set(CPACK_PACKAGE_CONTACT ${CORVANE_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Rules that check parts against how they are made")
set(CPACK_PACKAGING_INSTALL_PREFIX /opt/corvane)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_THREADS 0)
set(CPACK_COMPONENTS_ALL runtime development docs)
if(CORVANE_BUILD_TOOLS)
    list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
if(TARGET corvane_part)
    list(APPEND CPACK_COMPONENTS_ALL part)
endif()
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/CorvaneSystemFiles.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# What each program and module links tells which packages it needs. The project's own libraries are in none yet.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)

# corvane_package(COMPONENT NAME "summary" "description" [depends])
function(corvane_package component name summary description)
    string(TOUPPER ${component} upper)
    set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}\n${description}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARGN}" PARENT_SCOPE)
endfunction()

# Of the same version, whatever the release of its package is.
set(same_runtime "corvane-runtime (>= ${PROJECT_VERSION}), corvane-runtime (<< ${PROJECT_VERSION}.1~)")
corvane_package(runtime corvane-runtime "library, language modules and companion modules"
    " What programs need that run rules: the library, its texts, the script host and the drivers of the rule database.")
corvane_package(development corvane-dev "headers and build files"
    " What it takes to build rule modules, engines and hosts, with a CMake package and a file of pkg-config."
    "${same_runtime}, libc6-dev, g++ | clang")
corvane_package(tools corvane "command line and examples"
    " Checks parts against rules, lints rules, looks at an installation and writes skeletons of rules and engines."
    "${same_runtime}")
corvane_package(part corvane-part "CAD parts, with their engine and rules"
    " Reads STEP, IGES, BREP and STL for rules." "${same_runtime}")
corvane_package(docs corvane-doc "pages" " The pages of authors of rules and of site engineers.")
set(CPACK_DEBIAN_DOCS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCS_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS corvane-part)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "cmake, make, liblua5.4-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS corvane-doc)

# The loader's list of libraries is renewed when the folder of the library comes or goes.
file(WRITE ${PROJECT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
file(WRITE ${PROJECT_BINARY_DIR}/debian/conffiles "/etc/ld.so.conf.d/corvane.conf\n")
file(CHMOD ${PROJECT_BINARY_DIR}/debian/triggers ${PROJECT_BINARY_DIR}/debian/conffiles
    PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${PROJECT_BINARY_DIR}/debian/triggers ${PROJECT_BINARY_DIR}/debian/conffiles)
set(CPACK_DEBIAN_PART_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
include(CorvaneDebianPapers)
include(CPack)
