# ctest includes this before it chooses what to run: makes a test of each suite of PROGRAM, since the start of a
# process takes as long as most cases, and a test of each case of the suites that SPLIT matches.

if(NOT EXISTS "${PROGRAM}")
    add_test("${PROGRAM}" NOT_BUILT)
    return()
endif()
execute_process(COMMAND "${PROGRAM}" --gtest_list_tests OUTPUT_VARIABLE LISTED RESULT_VARIABLE ANSWER)
if(NOT ANSWER EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} does not list its tests: ${ANSWER}")
endif()

macro(add_filtered NAME FILTER)
    add_test("${NAME}" "${PROGRAM}" --gtest_brief=1 "--gtest_filter=${FILTER}")
    set_tests_properties("${NAME}" PROPERTIES TIMEOUT 120 ENVIRONMENT "TZ=UTC;LC_ALL=C")
endmacro()

# A line that is not indented names a suite, with a point at its end; those below it name its cases. A comment
# may follow.
string(REGEX MATCHALL "[^\n]+" LINES "${LISTED}")
foreach(LINE IN LISTS LINES)
    if(LINE MATCHES "^([^ ]+)\\.( .*)?$")
        set(SUITE "${CMAKE_MATCH_1}")
        if(NOT SUITE MATCHES "${SPLIT}")
            add_filtered("${SUITE}" "${SUITE}.*")
        endif()
    elseif(SUITE MATCHES "${SPLIT}" AND LINE MATCHES "^  ([^ ]+)")
        add_filtered("${SUITE}.${CMAKE_MATCH_1}" "${SUITE}.${CMAKE_MATCH_1}")
    endif()
endforeach()
