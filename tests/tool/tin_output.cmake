# Exact OBJ of five samples, the same mesh with the height in z, the layout and byte order of
# the PLY, the report's statistics, duplicates dropped from standard input, PLY and CSV inputs,
# and the built-in sample terrain.
include(${CMAKE_CURRENT_LIST_DIR}/run_tool.cmake)

run_tool(five tin ${DATA}/five.txt --up y --obj five.obj --ply five.ply)
expect_line(five "samples read" "5")
expect_line(five "triangles" "4")
expect_line(five "plan area of the triangles" "16")
expect_line(five "extent y" "1 .. 5 (size 4)")
expect_line(five "height median" "3")
expect_line(five "height standard deviation (sample, n - 1)" "1.58114")
file(READ ${WORK}/five.obj obj)
file(READ ${DATA}/five.obj expected)
if(NOT obj STREQUAL expected)
    message(FATAL_ERROR "five.obj differs from the expected mesh:\n${obj}")
endif()

# The same samples with the height in z, the default: the outputs keep the input's axes, so the
# vertices have y and z exchanged, and the faces, still counter-clockwise seen from above, turn
# the other way in the exchanged frame.
file(STRINGS ${DATA}/five.txt lines REGEX "^[^#]")
set(text "")
foreach(line IN LISTS lines)
    string(REGEX REPLACE "([^ ,\t]+)[ ,\t]+([^ ,\t]+)[ ,\t]+([^ ,\t#]+).*" "\\1 \\3 \\2" line "${line}")
    string(APPEND text "${line}\n")
endforeach()
file(WRITE ${WORK}/five_z.txt "${text}")
run_tool(five_z tin five_z.txt --obj five_z.obj)
file(READ ${WORK}/five_z.obj obj)
string(REGEX REPLACE "\nv ([^ ]+) ([^ ]+) ([^\n]+)" "\nv \\1 \\3 \\2" swapped "${expected}")
string(REGEX REPLACE "\nf ([0-9]+) ([0-9]+) ([0-9]+)" "\nf \\1 \\3 \\2" swapped "${swapped}")
if(NOT obj STREQUAL swapped)
    message(FATAL_ERROR "five_z.obj is not five.obj with y and z exchanged:\n${obj}")
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
# The first face of five.obj, zero-based, least significant byte first.
string(REGEX MATCH "\nf ([0-9]+) ([0-9]+) ([0-9]+)" face "${expected}")
math(EXPR a "${CMAKE_MATCH_1} - 1")
math(EXPR b "${CMAKE_MATCH_2} - 1")
math(EXPR c "${CMAKE_MATCH_3} - 1")
math(EXPR face_at "${body} + 2 * 5 * 24")
string(SUBSTRING "${ply}" ${face_at} 26 face)
if(NOT face STREQUAL "030${a}0000000${b}0000000${c}000000")
    message(FATAL_ERROR "five.ply: first face ${face}, expected ${a} ${b} ${c}")
endif()

# A sixth sample at the place of the third, but higher: dropped, the mesh unchanged.
file(READ ${DATA}/five.txt text)
file(WRITE ${WORK}/six.txt "${text}4 9 4\n")
run_tool(six INPUT ${WORK}/six.txt tin - --up=y --obj six.obj)
expect_line(six "samples dropped" "1 (1 within 1e-5 in plan of an earlier sample, 0 with coordinates too large or too small)")
expect_line(six "input" "standard input (text, height y)")
file(READ ${WORK}/six.obj obj)
if(NOT obj STREQUAL expected)
    message(FATAL_ERROR "six.obj differs from five.obj:\n${obj}")
endif()

# The true median: the middle height of an odd count, the mean of the two middle ones of an
# even count, whatever the order of the samples.
file(WRITE ${WORK}/odd.csv "X,Y,Z\n0,0,8\n1,0,2\n0,1,5\n")
run_tool(odd tin odd.csv)
expect_line(odd "height median" "5")
expect_line(odd "input" "odd.csv (text, height z)")
expect_line(odd "plan area of the triangles" "0.5")
file(WRITE ${WORK}/even.ply "ply\nformat ascii 1.0\nelement vertex 4\nproperty float z\n"
           "property uchar red\nproperty float y\nproperty double x\nend_header\n"
           "8 0 0 0\n2 0 0 1\n5 0 1 0\n6 0 1 1\n")
run_tool(even tin even.ply --quiet --threads 1)
expect_line(even "height median" "5.5")
expect_line(even "input" "even.ply (PLY, height z)")
expect_line(even "extent x" "0 .. 1 (size 1)")

run_tool(sample tin --svg terrain.svg)
expect_line(sample "samples read" "3600")
expect_line(sample "samples dropped" "0 (0 within 1e-5 in plan of an earlier sample, 0 with coordinates too large or too small)")
file(READ ${WORK}/terrain.svg svg)
string(REGEX MATCHALL "<path " paths "${svg}")
if(NOT svg MATCHES "^<svg .*</svg>\n$" OR NOT paths)
    message(FATAL_ERROR "terrain.svg is not a complete picture")
endif()
