# What shells and `man` need to know of the program, written by the program itself.
set(share ${CMAKE_BINARY_DIR}/share)
find_program(CORVANE_HELP2MAN help2man)
add_custom_target(corvane_shell_files ALL
    COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:corvane_tool> -DSHARE=${share} -DHELP2MAN=${CORVANE_HELP2MAN}
        -DVERSION=${PROJECT_VERSION} -P ${CMAKE_CURRENT_SOURCE_DIR}/author/write_shell_files.cmake
    DEPENDS corvane_tool
    BYPRODUCTS ${share}/bash-completion/completions/corvane ${share}/zsh/site-functions/_corvane
    COMMENT "Writing completions and manual pages")
add_dependencies(corvane_shell_files corvane_resources)
install(DIRECTORY ${share}/bash-completion ${share}/zsh DESTINATION share)
file(MAKE_DIRECTORY ${share}/man)
install(DIRECTORY ${share}/man DESTINATION share)
