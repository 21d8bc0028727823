# -DVANT_SANITIZE=address,undefined or thread, as the presets asan and tsan set it.
set(VANT_SANITIZE "" CACHE STRING "Sanitizers to build with, as the compiler names them")
if(VANT_SANITIZE)
    add_compile_options(-fsanitize=${VANT_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VANT_SANITIZE})
endif()

# What tests run with besides their own environment: a fault of ours ends them, those of the libraries are named.
set(VANT_TEST_ENVIRONMENT)
set(VANT_TEST_PATIENCE 1)
if(VANT_SANITIZE)
    # Several times as slow as without.
    set(VANT_TEST_PATIENCE 5)
    list(APPEND VANT_TEST_ENVIRONMENT
        # The web engine frees some of its objects by another size than it has allocated. The libraries keep no frame
        # pointers, so where they take memory is only known by the slow way.
        "ASAN_OPTIONS=new_delete_type_mismatch=0:fast_unwind_on_malloc=0"
        "LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_LIST_DIR}/LeakSuppressions.txt:print_suppressions=0"
        "UBSAN_OPTIONS=suppressions=${CMAKE_CURRENT_LIST_DIR}/UndefinedSuppressions.txt:halt_on_error=1:print_stacktrace=1")
endif()
