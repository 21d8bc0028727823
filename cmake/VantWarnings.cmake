# Every warning is an error for the code of this project; what libraries generate is compiled as they like it.
function(vant_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
    # Joined sources are included, and an anonymous type in an included file looks shared.
    if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
    # When it optimises, GCC 12 sees overlaps and empty values in the standard library that are not
    # there. The debug build and the sanitizers look for the real ones.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-restrict -Wno-maybe-uninitialized)
    endif()
endfunction()
