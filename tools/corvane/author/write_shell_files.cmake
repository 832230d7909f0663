# Writes completions and, with help2man, a manual page for the program and for each of its commands.
# Variables: PROGRAM, SHARE (the folder above all of them), HELP2MAN, VERSION.

# The pages are English, whatever the builder speaks.
set(ENV{LC_ALL} C)
set(ENV{CORVANE_REGISTRY_DIR} ${SHARE})

cmake_path(GET PROGRAM PARENT_PATH folder)
cmake_path(GET PROGRAM FILENAME name)

function(write file)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    file(WRITE ${SHARE}/${file} "${text}")
endfunction()

write(bash-completion/completions/corvane ${PROGRAM} completion bash)
write(zsh/site-functions/_corvane ${PROGRAM} completion zsh)
if(NOT HELP2MAN)
    return()
endif()

# help2man gives the program to a shell as it is, and its folder may have a blank in its name.
set(options --no-info --no-discard-stderr --version-string=${VERSION} --manual=Corvane --source=Corvane)
write(man/man1/corvane.1 ${HELP2MAN} ${options} "--name=check parts against manufacturing rules" ./${name})
execute_process(COMMAND ${PROGRAM} --help OUTPUT_VARIABLE help COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "^.*\nSubcommands:\n" "" help "${help}")
string(REGEX MATCHALL "(^|\n)  [a-z]+ " commands "${help}")
foreach(command IN LISTS commands)
    string(STRIP "${command}" command)
    string(REGEX MATCH "(^|\n)  ${command} +([^\n]+)" line "${help}")
    write(man/man1/corvane-${command}.1 ${HELP2MAN} ${options} "--name=${CMAKE_MATCH_2}" "./${name} ${command}")
    # The name of a page has no blank.
    file(READ ${SHARE}/man/man1/corvane-${command}.1 text)
    string(REPLACE "\ncorvane ${command} \\- " "\ncorvane-${command} \\- " text "${text}")
    file(WRITE ${SHARE}/man/man1/corvane-${command}.1 "${text}")
endforeach()
