# Steps of the tests of the packages: each ends the test with a message if it fails.

# Runs a command; `output` is what it said.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE code OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT code EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\nended with ${code}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# A folder must hold these files, sorted, and no others; headers do not count.
function(expect_files folder expected)
    file(GLOB_RECURSE found RELATIVE "${folder}" "${folder}/*")
    list(FILTER found EXCLUDE REGEX "\\.h$")
    list(SORT found)
    if(NOT found STREQUAL expected)
        message(FATAL_ERROR "${folder} holds\n  ${found}\ninstead of\n  ${expected}")
    endif()
endfunction()
