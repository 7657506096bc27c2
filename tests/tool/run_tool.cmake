# Helpers of the tool's test scripts. TOOL, EMULATOR (may be empty), DATA and WORK come from
# the command line; the tool runs in WORK, which starts empty.
cmake_minimum_required(VERSION 3.20)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

# run_tool(<prefix> [INPUT file] ARGUMENTS...): sets <prefix>_status, <prefix>_out and
# <prefix>_err, carriage returns removed (Windows writes them on the console streams).
function(run_tool prefix)
    cmake_parse_arguments(PARSE_ARGV 1 run "" "INPUT" "")
    set(input)
    if(run_INPUT)
        set(input INPUT_FILE ${run_INPUT})
    endif()
    execute_process(COMMAND ${EMULATOR} ${TOOL} ${run_UNPARSED_ARGUMENTS}
                    WORKING_DIRECTORY ${WORK} ${input}
                    RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
    string(REPLACE "\r" "" out "${out}")
    string(REPLACE "\r" "" err "${err}")
    set(${prefix}_status "${status}" PARENT_SCOPE)
    set(${prefix}_out "${out}" PARENT_SCOPE)
    set(${prefix}_err "${err}" PARENT_SCOPE)
endfunction()

# expect_run(<prefix> <status> <stream> <text>): the run ended with status and its out or err
# contains text.
function(expect_run prefix status stream text)
    set(what "zqmath run '${prefix}'")
    if(NOT "${${prefix}_status}" STREQUAL "${status}")
        message(FATAL_ERROR "${what}: status ${${prefix}_status}, expected ${status}\n"
                            "out:\n${${prefix}_out}\nerr:\n${${prefix}_err}")
    endif()
    string(FIND "${${prefix}_${stream}}" "${text}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "${what}: '${text}' missing from std${stream}:\n${${prefix}_${stream}}")
    endif()
endfunction()

# expect_line(<prefix> <label> <value>): the run's report has the line "label   value".
function(expect_line prefix label value)
    string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" label_pattern "${label}")
    string(REGEX REPLACE "([][+.*()^$?|\\])" "\\\\\\1" value_pattern "${value}")
    if(NOT "${${prefix}_out}" MATCHES "(^|\n)${label_pattern} +${value_pattern}\n")
        message(FATAL_ERROR "zqmath run '${prefix}': no line '${label} ${value}' in:\n${${prefix}_out}")
    endif()
endfunction()
