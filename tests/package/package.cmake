# Installs the build tree, moves the installed tree, and builds and runs against it what its users do: rule modules, an
# engine, a host and a script rule.
# Variables: BUILD (build tree), SOURCE (this folder), COMPILER, CTEST, FLAGS.

set(ENV{LC_ALL} C)
set(work ${BUILD}/package)
file(REMOVE_RECURSE ${work})

function(run expected)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL expected)
        message(FATAL_ERROR "${ARGN}\nended with ${status} and not ${expected}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(0 ${CMAKE_COMMAND} --install ${BUILD} --prefix ${work}/first)
file(RENAME ${work}/first ${work}/moved)
run(0 ${CMAKE_COMMAND} -S ${SOURCE}/consumer -B ${work}/consumer -G Ninja
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_PREFIX_PATH=${work}/moved)
run(0 ${CMAKE_COMMAND} --build ${work}/consumer)

run(1 ${work}/moved/bin/corvane run ${SOURCE}/consumer/rules.xml
    --modules ${work}/consumer/lib/rules --part ${SOURCE}/consumer/rules.xml)
if(NOT output MATCHES "Longest path exceeded")
    message(FATAL_ERROR "The rule did not speak:\n${output}")
endif()
run(0 ${work}/moved/bin/corvane run ${SOURCE}/consumer/rules.xml --modules ${work}/consumer/lib/rules)
file(COPY ${work}/consumer/lib/rules/ConsumerRules.so DESTINATION ${work}/moved/lib/rules)
run(0 ${work}/moved/bin/corvane run ${SOURCE}/consumer/rules.xml)

# A rule that throws could not judge.
run(3 ${work}/moved/bin/corvane run ${SOURCE}/consumer/throws.xml)
if(NOT output MATCHES "running the rule failed with an unknown exception")
    message(FATAL_ERROR "A rule that throws ended the run:\n${output}")
endif()

# The first command of the README, without any setting, with and without a home.
set(env ${CMAKE_COMMAND} -E env PATH=${work}/moved/bin:$ENV{PATH} CMAKE_PREFIX_PATH=${work}/moved)
foreach(home IN ITEMS ${work}/home /nonexistent)
    run(1 ${env} HOME=${home} corvane run ${work}/moved/examples/rules/scripts.xml
        --part ${work}/moved/examples/parts/bracket.stl)
    if(NOT output MATCHES "5 rules: 4 passed, 1 failed")
        message(FATAL_ERROR "The examples do not run without settings:\n${output}")
    endif()
endforeach()
if(EXISTS ${work}/home)
    message(FATAL_ERROR "A run has written to the home folder")
endif()

# Skeletons build, run and pass their own tests.
file(MAKE_DIRECTORY ${work}/new)
foreach(kind IN ITEMS rule-module engine host script-rule)
    string(REPLACE "-" "_" name my_${kind})
    run(0 ${env} HOME=${work}/home ${CMAKE_COMMAND} -E chdir ${work}/new corvane new ${kind} ${name})
    run(2 ${env} HOME=${work}/home ${CMAKE_COMMAND} -E chdir ${work}/new corvane new ${kind} ${name})
    set(folder ${work}/new/${name})
    if(kind STREQUAL "script-rule")
        run(0 ${env} HOME=${work}/home sh ${folder}/test.sh)
        continue()
    endif()
    run(0 ${env} ${CMAKE_COMMAND} -S ${folder} -B ${folder}/build -G Ninja
        -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
    run(0 ${env} ${CMAKE_COMMAND} --build ${folder}/build)
    run(0 ${env} ${CTEST} --test-dir ${folder}/build --no-tests=error --output-on-failure)
endforeach()

# Texts of a module are in the user's language, and names of parameters too.
run(1 ${env} HOME=${work}/home LC_ALL=fr_FR.UTF-8 corvane run ${work}/new/my_rule_module/rules.xml --material PA6
    --modules ${work}/new/my_rule_module/build/lib/rules --part ${work}/new/my_rule_module/box.stl)
if(NOT output MATCHES "mesure 10.00 mm")
    message(FATAL_ERROR "The module does not speak French:\n${output}")
endif()

# The file of pkg-config, in the moved tree.
run(0 ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${work}/moved/lib/pkgconfig pkg-config --cflags --libs corvane)
separate_arguments(flags UNIX_COMMAND "${output}")
run(0 ${COMPILER} ${FLAGS} ${work}/new/my_host/my_host.cpp -o ${work}/plain ${flags})
run(2 ${work}/plain)

# The rules that ship.
if(EXISTS ${work}/moved/share/corvane/rules)
    run(0 ${env} HOME=${work}/home corvane check ${work}/moved/examples/parts/bracket.stl --process milling)
endif()
