# corvane_add_subsystem(NAME SOURCES file... [LIBRARIES target...])
#   One folder of src/ as an object library corvane_<NAME>, part of the core library.
function(corvane_add_subsystem name)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_library(corvane_${name} OBJECT ${arg_SOURCES})
    target_link_libraries(corvane_${name} PUBLIC corvane_headers PRIVATE corvane_compile)
    target_link_libraries(corvane_${name} PUBLIC ${arg_LIBRARIES})
    target_compile_definitions(corvane_${name} PRIVATE corvane_EXPORTS)
    corvane_precompile(corvane_${name})
    target_include_directories(corvane_${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>)
    set_property(GLOBAL APPEND PROPERTY CORVANE_SUBSYSTEMS corvane_${name})
endfunction()

# corvane_add_test(NAME SOURCES file... SUBSYSTEMS name... [LIBRARIES target...] [COST number] [LONGEST suite])
#   A GoogleTest program test_<NAME> over the objects of the named subsystems, so that a test reaches what the
#   shared library hides. A test of what is exported names no subsystem and links the library `corvane`. A test that
#   takes long has a cost: the costliest start first.
function(corvane_add_test name)
    cmake_parse_arguments(arg "" "COST;LONGEST" "SOURCES;SUBSYSTEMS;LIBRARIES" ${ARGN})
    add_executable(test_${name} ${arg_SOURCES})
    list(TRANSFORM arg_SUBSYSTEMS PREPEND corvane_)
    target_link_libraries(test_${name} PRIVATE
        corvane_compile corvane_headers ${arg_SUBSYSTEMS} ${arg_LIBRARIES} GTest::gmock GTest::gtest_main)
    target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_precompile_headers(test_${name} REUSE_FROM headers_of_tests)
    target_compile_definitions(test_${name} PRIVATE
        CORVANE_BUILD_DIR="${PROJECT_BINARY_DIR}" CORVANE_TEST_DATA="${PROJECT_SOURCE_DIR}/tests")
    if(arg_SUBSYSTEMS)
        target_compile_definitions(test_${name} PRIVATE corvane_EXPORTS)
    endif()
    # The objects load them as the library does: these at the start, and that one from the library's folder.
    add_dependencies(test_${name} corvane_resources CorvaneXmlParser)
    set_target_properties(test_${name} PROPERTIES BUILD_RPATH "$ORIGIN/../lib")
    # One ctest entry a program: starting a process for each case costs more than the cases do. A suite that takes longer
    # than most programs has its own, so that the processors share the work.
    set(entries ${name})
    if(arg_LONGEST)
        list(APPEND entries ${name}_${arg_LONGEST})
        add_test(NAME ${name} COMMAND test_${name} --gtest_filter=-*${arg_LONGEST}*)
        add_test(NAME ${name}_${arg_LONGEST} COMMAND test_${name} --gtest_filter=*${arg_LONGEST}*)
    else()
        add_test(NAME ${name} COMMAND test_${name})
    endif()
    if(arg_COST)
        set_tests_properties(${entries} PROPERTIES COST ${arg_COST})
    endif()
    # The sanitizer's library opens modules in place of the program, and does not look in the program's folders.
    if(CORVANE_SANITIZE AND arg_SUBSYSTEMS)
        set_tests_properties(${entries} PROPERTIES ENVIRONMENT "LD_LIBRARY_PATH=${PROJECT_BINARY_DIR}/lib")
    endif()
endfunction()
