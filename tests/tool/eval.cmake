# Postfix order (the last operand just below its operator), the result formats, numbers that
# print back exactly, and each kind of bad expression with status 2.
include(${CMAKE_CURRENT_LIST_DIR}/run_tool.cmake)

set(good
    "2 10 pow 1 sub|scalar 1023"
    "1 2 -|scalar -1"
    "0.1 0.2 add|scalar 0.30000000000000004"
    "(1,0,0) (0,1,0) cross|vector3 (0, 0, 1)"
    "(1, 2) (3,4) mul|vector2 (3, 8)"
    "0 5 6 if|scalar 6"
    "1 2 3 4 quat|quaternion (1, 2, 3, 4)")
foreach(case IN LISTS good)
    string(REPLACE "|" ";" case "${case}")
    list(GET case 0 expression)
    list(GET case 1 result)
    run_tool(good eval "${expression}")
    expect_run(good 0 out "${result}\n")
endforeach()

set(bad
    "1 +|token 2 '+' takes 2 operands, 1 given"
    "1 2|2 values are left"
    "1 foo +|token 2 'foo' is not a number, a vector or an operator"
    "(1,2,3,4,5)|a vector has 2, 3 or 4 components"
    "(1,2) 3 add|an operand has a format its operator does not take")
foreach(case IN LISTS bad)
    string(REPLACE "|" ";" case "${case}")
    list(GET case 0 expression)
    list(GET case 1 message)
    run_tool(bad eval "${expression}")
    expect_run(bad 2 err "${message}")
endforeach()
