# Exact OBJ of five samples, the layout and byte order of the PLY, duplicates dropped from
# standard input, and the built-in sample terrain.
include(${CMAKE_CURRENT_LIST_DIR}/run_tool.cmake)

run_tool(five tin ${DATA}/five.txt --obj five.obj --ply five.ply)
expect_run(five 0 out "samples read               5\n")
expect_run(five 0 out "triangles                  4\n")
file(READ ${WORK}/five.obj obj)
file(READ ${DATA}/five.obj expected)
if(NOT obj STREQUAL expected)
    message(FATAL_ERROR "five.obj differs from the expected mesh:\n${obj}")
endif()

# Header, then five vertices of three doubles and four faces of a count byte and three ints.
file(READ ${WORK}/five.ply ply HEX)
string(FIND "${ply}" "656e645f6865616465720a" end) # "end_header\n"
math(EXPR body "${end} + 22")
string(LENGTH "${ply}" length)
math(EXPR expected_length "${body} + 2 * (5 * 24 + 4 * 13)")
if(end EQUAL -1 OR NOT length EQUAL expected_length)
    message(FATAL_ERROR "five.ply: ${length} hex digits, expected ${expected_length}")
endif()
# The first vertex (0, 1, 0) and the first face (1 4 5, zero-based 0 3 4), least significant byte first.
string(SUBSTRING "${ply}" ${body} 48 vertex)
if(NOT vertex STREQUAL "0000000000000000000000000000f03f0000000000000000")
    message(FATAL_ERROR "five.ply: first vertex ${vertex}")
endif()
math(EXPR face "${body} + 2 * 5 * 24")
string(SUBSTRING "${ply}" ${face} 26 face)
if(NOT face STREQUAL "03000000000300000004000000")
    message(FATAL_ERROR "five.ply: first face ${face}")
endif()

# A sixth sample at the place of the third, but higher: dropped, the mesh unchanged.
file(READ ${DATA}/five.txt text)
file(WRITE ${WORK}/six.txt "${text}4 9 4\n")
run_tool(six INPUT ${WORK}/six.txt tin - --obj six.obj)
expect_run(six 0 out "samples dropped            1")
expect_run(six 0 out "input                      standard input\n")
file(READ ${WORK}/six.obj obj)
if(NOT obj STREQUAL expected)
    message(FATAL_ERROR "six.obj differs from five.obj:\n${obj}")
endif()

run_tool(sample tin --svg terrain.svg)
expect_run(sample 0 out "samples read               3600\n")
expect_run(sample 0 out "samples dropped            0")
file(READ ${WORK}/terrain.svg svg)
string(REGEX MATCHALL "<path " paths "${svg}")
if(NOT svg MATCHES "^<svg .*</svg>\n$" OR NOT paths)
    message(FATAL_ERROR "terrain.svg is not a complete picture")
endif()
