# zqmath mesh: the built-in sample and a PGM written here mesh and write every format; bad
# heightmaps and options end with status 2 and leave no file behind. PNG_READS says whether
# this build reads PNG.
include(${CMAKE_CURRENT_LIST_DIR}/run_tool.cmake)

run_tool(sample mesh --stl out.stl --obj out.obj --ply out.ply --svg out.svg --base 4)
expect_run(sample 0 out "input                  built-in sample map")
string(REGEX MATCH "triangles +([0-9]+)" found "${sample_out}")
set(triangles ${CMAKE_MATCH_1})
expect_run(sample 0 out "largest error          0.00")
foreach(file out.stl out.obj out.ply out.svg)
    if(NOT EXISTS ${WORK}/${file})
        message(FATAL_ERROR "sample: ${file} not written")
    endif()
endforeach()
file(SIZE ${WORK}/out.stl stl)
math(EXPR facets "(${stl} - 84) / 50")
if(facets LESS_EQUAL triangles)
    message(FATAL_ERROR "sample: ${facets} STL facets for ${triangles} triangles and a base")
endif()

# A 4 x 3 plain PGM with a 16-bit range, meshed exactly within a triangle budget.
file(WRITE ${WORK}/map.pgm "P2\n4 3\n65535\n0 100 0 0\n0 0 65535 0\n9 0 0 0\n")
run_tool(pgm mesh map.pgm --error=0.000001 --triangles 100 --obj map.obj)
expect_run(pgm 0 out "largest error          0 of the full range")

file(WRITE ${WORK}/bad.pgm "P2\n4 3\n255\n0 1 2\n")
set(cases
    "bad.pgm|bad.pgm:5: the file ends where the pixel value was expected"
    "missing.pgm|zqmath: cannot read 'missing.pgm'"
    "map.pgm --error 0|--error must be above 0 and below 1"
    "map.pgm --error 1|--error must be above 0 and below 1"
    "map.pgm --error 0.1x|--error needs a number, not '0.1x'"
    "map.pgm --triangles 1|--triangles must be at least 2"
    "map.pgm --vertices 3|--vertices must be at least 4"
    "map.pgm --zscale -1|--zscale must be above 0"
    "map.pgm --wrong 1|unknown option '--wrong'")
if(PNG_READS)
    list(APPEND cases "${DATA}/rgb.png|rgb.png: not a grayscale image (PNG colour type 2)"
         "${DATA}/truncated.png|truncated.png: ")
else()
    list(APPEND cases "${DATA}/rgb.png|rgb.png: this build of zqmath cannot read PNG")
endif()
foreach(case IN LISTS cases)
    string(FIND "${case}" "|" split)
    string(SUBSTRING "${case}" 0 ${split} arguments)
    separate_arguments(arguments UNIX_COMMAND "${arguments}")
    math(EXPR split "${split} + 1")
    string(SUBSTRING "${case}" ${split} -1 message)
    file(REMOVE ${WORK}/out.stl ${WORK}/out.svg)
    run_tool(bad mesh ${arguments} --stl out.stl --svg out.svg)
    expect_run(bad 2 err "${message}")
    file(GLOB made ${WORK}/out.*)
    list(FILTER made EXCLUDE REGEX "out\\.(obj|ply)$")
    if(made)
        message(FATAL_ERROR "${message}: files after the failed run: ${made}")
    endif()
endforeach()
