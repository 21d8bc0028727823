# Every warning is an error for the code of this project; what libraries generate is compiled as they like it.
function(vant_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()
