# -DVANT_SANITIZE=address,undefined or thread, as the presets asan and tsan set it.
set(VANT_SANITIZE "" CACHE STRING "Sanitizers to build with, as the compiler names them")
if(VANT_SANITIZE)
    add_compile_options(-fsanitize=${VANT_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VANT_SANITIZE})
endif()
