# Builds and runs against an installed tree what no page shows: a rule module that breaks its rule, one that throws, and
# runs without any setting. The tutorials build engines, hosts and script rules.
# Variables: MOVED (installed tree), WORK (folder to work in), SOURCE (this folder), COMPILER, FLAGS.

set(ENV{LC_ALL} C)
file(REMOVE_RECURSE ${WORK})

function(run expected)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL expected)
        message(FATAL_ERROR "${ARGN}\nended with ${status} and not ${expected}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(0 ${CMAKE_COMMAND} -S ${SOURCE}/consumer -B ${WORK}/consumer -G Ninja
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DCMAKE_PREFIX_PATH=${MOVED})
run(0 ${CMAKE_COMMAND} --build ${WORK}/consumer)

run(1 ${MOVED}/bin/corvane run ${SOURCE}/consumer/rules.xml
    --modules ${WORK}/consumer/lib/rules --part ${SOURCE}/consumer/rules.xml)
if(NOT output MATCHES "Longest path exceeded")
    message(FATAL_ERROR "The rule did not speak:\n${output}")
endif()
run(0 ${MOVED}/bin/corvane run ${SOURCE}/consumer/rules.xml --modules ${WORK}/consumer/lib/rules)
file(COPY ${WORK}/consumer/lib/rules/ConsumerRules.so DESTINATION ${MOVED}/lib/rules)
run(0 ${MOVED}/bin/corvane run ${SOURCE}/consumer/rules.xml)

# A rule that throws could not judge.
run(3 ${MOVED}/bin/corvane run ${SOURCE}/consumer/throws.xml)
if(NOT output MATCHES "running the rule failed with an unknown exception")
    message(FATAL_ERROR "A rule that throws ended the run:\n${output}")
endif()

# Without any setting, with and without a home.
foreach(home IN ITEMS ${WORK}/home /nonexistent)
    run(1 ${CMAKE_COMMAND} -E env HOME=${home} ${MOVED}/bin/corvane run ${MOVED}/examples/rules/scripts.xml
        --part ${MOVED}/examples/parts/bracket.stl)
    if(NOT output MATCHES "5 rules: 4 passed, 1 failed")
        message(FATAL_ERROR "The examples do not run without settings:\n${output}")
    endif()
endforeach()
if(EXISTS ${WORK}/home)
    message(FATAL_ERROR "A run has written to the home folder")
endif()

# The rules that ship.
if(EXISTS ${MOVED}/share/corvane/rules)
    run(0 ${CMAKE_COMMAND} -E env HOME=${WORK}/home
        ${MOVED}/bin/corvane check ${MOVED}/examples/parts/bracket.stl --process milling)
endif()
