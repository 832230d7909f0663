# What Debian asks of each package in /usr/share/doc/PACKAGE: whose it is and on what terms, and what has changed. Written
# from LICENSE and CHANGELOG.md into the folder debian/ of the build; CorvaneSystemFiles.cmake puts them into the packages.

set(CPACK_CORVANE_PAPERS ${PROJECT_BINARY_DIR}/debian)

# A text as a field of a control file: indented, with points for empty lines.
function(corvane_control_text text result)
    string(STRIP "${text}" text)
    string(REPLACE "\n" "\n " text " ${text}")
    string(REGEX REPLACE "\n[ \t]*\n" "\n .\n" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

set(terms "All rights reserved. Whoever got this package from the authors uses it on the terms agreed with them.")
if(EXISTS ${PROJECT_SOURCE_DIR}/LICENSE)
    file(READ ${PROJECT_SOURCE_DIR}/LICENSE terms)
endif()
corvane_control_text("${terms}" terms)
# The report's page holds it, when the build found it.
file(READ ${PROJECT_SOURCE_DIR}/tools/corvane/results/report/three-licence.txt three_terms)
corvane_control_text("${three_terms}" three_terms)
file(CONFIGURE OUTPUT ${CPACK_CORVANE_PAPERS}/copyright @ONLY CONTENT
[[Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: Corvane Framework
Upstream-Contact: @CPACK_PACKAGE_CONTACT@

Files: *
Copyright: 2026 the authors of Corvane Framework
License: Corvane
@terms@

Files: opt/corvane/bin/corvane
Copyright: 2026 the authors of Corvane Framework
           2010-2019 the authors of three.js
License: Corvane and Expat
Comment: The reports that the program writes hold three.js.

License: Expat
@three_terms@
]])

# The lines of this version, in the form of Debian's changelogs.
file(READ ${PROJECT_SOURCE_DIR}/CHANGELOG.md changes)
string(FIND "${changes}" "## ${PROJECT_VERSION}" start)
if(start EQUAL -1)
    message(FATAL_ERROR "CHANGELOG.md has no part ${PROJECT_VERSION}")
endif()
string(SUBSTRING "${changes}" ${start} -1 changes)
string(REGEX REPLACE "^## [^\n]*\n+" "" changes "${changes}")
string(REGEX REPLACE "\n## .*$" "" changes "${changes}")
string(REGEX REPLACE "\n- " "\n* " changes "\n${changes}")
string(REGEX REPLACE "\n([^\n])" "\n  \\1" changes "${changes}")
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${CPACK_CORVANE_PAPERS}/changelog
    "corvane (${PROJECT_VERSION}) unstable; urgency=medium\n${changes}\n -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
