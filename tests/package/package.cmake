# Installs the build tree, moves the installed tree, builds a rule module against it and runs that.
# Variables: BUILD (build tree), SOURCE (this folder), COMPILER, FLAGS.

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
