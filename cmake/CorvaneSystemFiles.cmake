# Adds to the trees that become packages what the system looks for outside /opt: the program in PATH, its manual pages and
# completions, the list of the loader, the file of pkg-config, and the papers of each package.

set(prefix ${CPACK_PACKAGING_INSTALL_PREFIX})

# A link in the tree of a component, at its full path, to a file of the folder.
function(link component target link)
    set(tree ${CPACK_TEMPORARY_DIRECTORY}/${component})
    if(EXISTS ${tree}${prefix}/${target})
        cmake_path(GET link PARENT_PATH folder)
        file(MAKE_DIRECTORY ${tree}${folder})
        file(CREATE_LINK ${prefix}/${target} ${tree}${link} SYMBOLIC)
    endif()
endfunction()

link(tools bin/corvane /usr/bin/corvane)
link(docs share/doc/corvane /usr/share/doc/corvane-doc/pages)
link(docs share/doc/corvane/html /usr/share/doc/corvane/html)
link(tools share/bash-completion/completions/corvane /usr/share/bash-completion/completions/corvane)
link(tools share/zsh/site-functions/_corvane /usr/share/zsh/vendor-completions/_corvane)
# Debian's pages are compressed, unlike those of the tree.
file(GLOB pages ${CPACK_TEMPORARY_DIRECTORY}/tools${prefix}/share/man/man1/*)
foreach(page IN LISTS pages)
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/tools/usr/share/man/man1)
    file(COPY ${page} DESTINATION ${folder})
    cmake_path(GET page FILENAME name)
    execute_process(COMMAND gzip -9nf ${folder}/${name} COMMAND_ERROR_IS_FATAL ANY)
endforeach()

file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/runtime/etc/ld.so.conf.d/corvane.conf "${prefix}/lib\n")

set(description ${CPACK_TEMPORARY_DIRECTORY}/development${prefix}/lib/pkgconfig/corvane.pc)
if(EXISTS ${description})
    file(READ ${description} text)
    string(REGEX REPLACE "^prefix=[^\n]*" "prefix=${prefix}" text "${text}")
    file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/development/usr/share/pkgconfig/corvane.pc "${text}")
endif()

# A package without a revision is its own upstream, whose changelog is Debian's.
set(changelog changelog)
if(CPACK_DEBIAN_PACKAGE_RELEASE)
    set(changelog changelog.Debian)
endif()
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share/doc/${package})
    file(READ ${CPACK_CORVANE_PAPERS}/changelog text)
    if(CPACK_DEBIAN_PACKAGE_RELEASE)
        string(REPLACE "(${CPACK_PACKAGE_VERSION})" "(${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})" text "${text}")
    endif()
    file(WRITE ${folder}/${changelog} "${text}")
    execute_process(COMMAND gzip -9nf ${folder}/${changelog} COMMAND_ERROR_IS_FATAL ANY)
    file(COPY ${CPACK_CORVANE_PAPERS}/copyright DESTINATION ${folder})
    file(CHMOD ${folder}/copyright ${folder}/${changelog}.gz
        PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    # What lintian would call errors and is meant.
    set(overrides "# The tree is one folder that can be moved.\n${package}: dir-or-file-in-opt\n")
    if(component STREQUAL runtime)
        string(APPEND overrides "# The library is in that folder, where the loader does not look by itself.\n"
            "${package}: package-modifies-ld.so-search-path\n")
    endif()
    file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share/lintian/overrides/${package} "${overrides}")
endforeach()
