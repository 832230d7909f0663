# Modules that rule files and scripts load. A module shows only what CORVANE_MODULE_EXPORT marks, and finds the library of
# the installation that it is moved to.

include("${CMAKE_CURRENT_LIST_DIR}/CorvaneStringTables.cmake")

# corvane_add_rule_module(NAME SOURCES file... [STRINGS folder LANGUAGES language...] [LIBRARIES target...])
#   A rule module: a loadable module <NAME> over the rule interface, in lib/rules of the build tree, to be moved to
#   lib/rules of an installed tree. STRINGS names a folder with a table of texts for each of LANGUAGES, such as
#   english.txt; the first one serves every language without a table.
function(corvane_add_rule_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "STRINGS" "SOURCES;LANGUAGES;LIBRARIES")
    if(NOT arg_SOURCES OR arg_UNPARSED_ARGUMENTS OR (arg_STRINGS AND NOT arg_LANGUAGES))
        message(FATAL_ERROR "corvane_add_rule_module(NAME SOURCES file... [STRINGS folder LANGUAGES language...] "
            "[LIBRARIES target...])")
    endif()
    corvane_add_loadable_module(${name} rules ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE ${arg_LIBRARIES})
    if(arg_STRINGS)
        corvane_add_string_tables(${name} ${arg_STRINGS} ${arg_LANGUAGES})
    endif()
endfunction()

# corvane_add_engine(NAME TYPE_LIBRARY file.tlb SOURCES file... [LIBRARIES target...])
#   An engine of scripts: a loadable module <NAME> with the function luaopen_<NAME>, and beside it its type library, in
#   lib/engines of the build tree. It links the shared library of Lua that the script host links.
function(corvane_add_engine name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TYPE_LIBRARY" "SOURCES;LIBRARIES")
    if(NOT arg_SOURCES OR NOT arg_TYPE_LIBRARY OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "corvane_add_engine(NAME TYPE_LIBRARY file.tlb SOURCES file... [LIBRARIES target...])")
    endif()
    find_package(Lua 5.4 EXACT REQUIRED)
    corvane_add_loadable_module(${name} engines ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${LUA_INCLUDE_DIR})
    target_link_libraries(${name} PRIVATE ${LUA_LIBRARIES} ${arg_LIBRARIES})
    cmake_path(ABSOLUTE_PATH arg_TYPE_LIBRARY)
    add_custom_command(TARGET ${name} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${arg_TYPE_LIBRARY} $<TARGET_FILE_DIR:${name}>/${name}.tlb)
endfunction()

# What both are, in lib/<FOLDER>.
function(corvane_add_loadable_module name folder)
    add_library(${name} MODULE ${ARGN})
    target_link_libraries(${name} PRIVATE Corvane::corvane)
    # Without it GCC has the loader keep the module, and with it the library, until the process ends.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/${folder})
    if(UNIX AND NOT APPLE)
        set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN/..")
    endif()
endfunction()
