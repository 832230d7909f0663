# Compiler settings that every target of the project shares.

option(CORVANE_SANITIZE "Build with the address and undefined behaviour sanitizers" OFF)

option(CORVANE_WERROR "Take warnings for errors, as this project's presets for its developers do" OFF)

add_library(corvane_compile INTERFACE)
target_compile_features(corvane_compile INTERFACE cxx_std_20)
# Contraction would fuse a multiplication and an addition into one rounding and change exact results.
target_compile_options(corvane_compile INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${CORVANE_WERROR}>:-Werror> -ffp-contract=off)
# GCC 12 sees the parts of a joined string overlap when it optimises, which they cannot.
target_compile_options(corvane_compile INTERFACE
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
# GCC marks what is inline and static as unique in the process, and the loader keeps a module that has such a symbol.
target_compile_options(corvane_compile INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
if(CORVANE_SANITIZE)
    target_compile_options(corvane_compile INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # Clang takes a type for another one where it is declared in a library and in a module, whose names are hidden.
    target_compile_options(corvane_compile INTERFACE $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
    # The checks that GCC adds hide from it that a value of the standard library is set.
    target_compile_options(corvane_compile INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    target_link_options(corvane_compile INTERFACE -fsanitize=address,undefined)
endif()

find_program(CORVANE_CCACHE ccache)
if(CORVANE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CORVANE_CCACHE})
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# The build tree has the shape of the installed tree: programs in bin/, libraries and modules in lib/.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

# Programs and modules find the library relative to themselves, in the build tree as in an installed one.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
if(NOT WIN32)
    set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../lib;$ORIGIN/..")
endif()

# corvane_add_headers(NAME [PROGRAMS] HEADERS header... [LIBRARIES target...])
#   Headers that are compiled once for many targets, libraries or PROGRAMS, which take them over from NAME. It has the
#   definitions of none of them: Clang would hand them on.
function(corvane_add_headers name)
    cmake_parse_arguments(arg "PROGRAMS" "" "HEADERS;LIBRARIES" ${ARGN})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp) # CMake wants one
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(${name} OBJECT ${source})
    target_link_libraries(${name} PRIVATE corvane_compile ${arg_LIBRARIES})
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
    # As the programs that reuse it are compiled.
    if(arg_PROGRAMS)
        set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
        target_compile_options(${name} PRIVATE ${CMAKE_CXX_COMPILE_OPTIONS_PIE})
    endif()
endfunction()

# Those of the standard library that many sources include.
set(CORVANE_COMMON_HEADERS
    <algorithm> <filesystem> <fstream> <functional> <map> <memory> <optional> <sstream> <string> <vector>)

# With GCC 12 it also brings warnings of the standard library's own headers.
option(CORVANE_PRECOMPILE "Read headers of the standard library once, which hides where one is not included" OFF)
if(CORVANE_PRECOMPILE)
    corvane_add_headers(headers_of_libraries HEADERS ${CORVANE_COMMON_HEADERS})
    corvane_add_headers(headers_of_programs PROGRAMS HEADERS ${CORVANE_COMMON_HEADERS})
endif()

# corvane_precompile(TARGET)
#   For a target of many sources.
function(corvane_precompile target)
    if(CORVANE_PRECOMPILE)
        get_target_property(type ${target} TYPE)
        if(type STREQUAL "EXECUTABLE")
            target_precompile_headers(${target} REUSE_FROM headers_of_programs)
        else()
            target_precompile_headers(${target} REUSE_FROM headers_of_libraries)
        endif()
    endif()
endfunction()
