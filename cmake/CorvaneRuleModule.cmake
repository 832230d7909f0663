# corvane_add_rule_module(NAME SOURCES file... [LIBRARIES target...])
#   A rule module: a loadable module <NAME> over the rule interface, in lib/rules of the build tree. It shows only what
#   CORVANE_MODULE_EXPORT marks. Moved to lib/rules of an installed tree it finds the library of that tree.
function(corvane_add_rule_module name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    if(NOT arg_SOURCES OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "corvane_add_rule_module(NAME SOURCES file... [LIBRARIES target...])")
    endif()
    add_library(${name} MODULE ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE Corvane::corvane ${arg_LIBRARIES})
    # Without it GCC has the loader keep the module, and with it the library, until the process ends.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
    set_target_properties(${name} PROPERTIES
        PREFIX ""
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/rules)
    if(UNIX AND NOT APPLE)
        set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN/..")
    endif()
endfunction()
