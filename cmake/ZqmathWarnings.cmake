# zqmath_warnings(target): the project's warning level on one target.
function(zqmath_warnings target)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${ZQMATH_WERROR}>:/WX>)
    else()
        target_compile_options(${target} PRIVATE -Wall -Wextra $<$<BOOL:${ZQMATH_WERROR}>:-Werror>)
    endif()
endfunction()
