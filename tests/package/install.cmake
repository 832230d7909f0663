# Installs the build tree and moves the installed tree.
# Variables: BUILD (build tree), MOVED (where the tree is in the end).
cmake_path(GET MOVED PARENT_PATH folder)
file(REMOVE_RECURSE ${folder})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${folder}/first OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${folder}/first ${MOVED})
