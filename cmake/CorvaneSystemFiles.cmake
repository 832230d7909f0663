# Adds to the trees that become packages what the system looks for outside /opt: the program in PATH, its manual pages and
# completions, the list of the loader and the file of pkg-config.

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
link(docs share/doc/corvane /usr/share/doc/corvane-doc)
link(tools share/bash-completion/completions/corvane /usr/share/bash-completion/completions/corvane)
link(tools share/zsh/site-functions/_corvane /usr/share/zsh/vendor-completions/_corvane)
file(GLOB pages RELATIVE ${CPACK_TEMPORARY_DIRECTORY}/tools${prefix} ${CPACK_TEMPORARY_DIRECTORY}/tools${prefix}/share/man/man1/*)
foreach(page IN LISTS pages)
    cmake_path(GET page FILENAME name)
    link(tools ${page} /usr/share/man/man1/${name})
endforeach()

file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/runtime/etc/ld.so.conf.d/corvane.conf "${prefix}/lib\n")

set(description ${CPACK_TEMPORARY_DIRECTORY}/development${prefix}/lib/pkgconfig/corvane.pc)
if(EXISTS ${description})
    file(READ ${description} text)
    string(REGEX REPLACE "^prefix=[^\n]*" "prefix=${prefix}" text "${text}")
    file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/development/usr/share/pkgconfig/corvane.pc "${text}")
endif()
