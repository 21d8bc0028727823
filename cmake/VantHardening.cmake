# What makes an error in native code harder to exploit, in all builds that are given to users. The debug build and
# the sanitizers look for the errors themselves, and _FORTIFY_SOURCE needs an optimising compiler.
if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES C CXX)
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options(-fstack-protector-strong)
    # Some compilers define it themselves.
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    add_link_options(-Wl,-z,relro,-z,now)
endif()
