# Each bad input is named by file and line, ends with status 2 and writes nothing: an earlier
# file of the same name stays as it was, and no temporary file is left behind.
include(${CMAKE_CURRENT_LIST_DIR}/run_tool.cmake)

# check_nothing_written(<name>): out.obj still holds "old", nothing else was made.
function(check_nothing_written name)
    file(GLOB made RELATIVE ${WORK} ${WORK}/out*)
    file(READ ${WORK}/out.obj old)
    if(NOT made STREQUAL "out.obj" OR NOT old STREQUAL "old\n")
        message(FATAL_ERROR "${name}: files after the failed run: ${made}")
    endif()
endfunction()

set(cases
    "1 2 3\n1 2 x\n|bad.txt:2: 'x' is not a number"
    "1 2 3\n\n# a comment\n4 5 # two\n|bad.txt:4: 2 fields where x y z was expected"
    "1 2 3 4\n|bad.txt:1: 4 fields where x y z was expected"
    "x y z\n1 2 3\n4 5 <SOH>\n|bad.txt:3: '\\x01' is not a number"
    "x,y,z,class\n1,2,3\n|bad.txt:2: 3 fields where the header has 4"
    "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\nend_header\n|bad.txt: header: the vertex element has no property z"
    "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\nproperty float z\nend_header\n1 2 3\n|bad.txt: vertex record 2: the file ends before it"
    "1 2 3\n4 nan 6\n|bad.txt:2: 'nan' is not a finite number"
    "1 2 3\n4 5 -inf\n|bad.txt:2: '-inf' is not a finite number"
    "1 2 1e999\n|bad.txt:1: '1e999' is out of the range of a double"
    "# only a comment\n\n|bad.txt:2: no samples in the input"
    "|bad.txt:1: no samples in the input")
# A control byte, written into the file in place of <SOH>, comes back escaped.
string(ASCII 1 soh)
file(WRITE ${WORK}/out.obj "old\n")
foreach(case IN LISTS cases)
    string(REPLACE "|" ";" case "${case}")
    list(GET case 0 text)
    list(GET case 1 message)
    string(REPLACE "<SOH>" "${soh}" text "${text}")
    file(WRITE ${WORK}/bad.txt "${text}")
    run_tool(bad tin bad.txt --obj out.obj --svg out.svg)
    expect_run(bad 2 err "${message}\n")
    check_nothing_written("${message}")
endforeach()

# An output that cannot be made: status 1, and the other output is not kept either.
file(WRITE ${WORK}/good.txt "0 0 0\n1 0 0\n0 0 1\n")
run_tool(unwritable tin good.txt --obj out-good.obj --svg missing/out.svg)
expect_run(unwritable 1 err "zqmath: cannot write 'missing/out.svg.tmp'")
check_nothing_written("unwritable")
