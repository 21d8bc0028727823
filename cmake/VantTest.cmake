# A test program of Qt Test: vant_test(net_RequestItemTest SOURCES RequestItemTest.cpp LINK vant_net)
# Tests that start the school platform get its path by environment VANT_SANDBOX.
function(vant_test name)
    cmake_parse_arguments(TEST "" "" "SOURCES;LINK" ${ARGN})
    qt_add_executable(${name} ${TEST_SOURCES})
    vant_moc(${name})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE Qt6::Test vant_test_support ${TEST_LINK})
    vant_warnings(${name})
    add_dependencies(${name} vant-sandbox)
    add_test(NAME ${name} COMMAND ${name})
    set(environment ${VANT_TEST_ENVIRONMENT}
        "QT_QPA_PLATFORM=offscreen"
        "QT_QUICK_BACKEND=software"
        "VANT_SANDBOX=$<TARGET_FILE:vant-sandbox>"
        "QTWEBENGINE_DISABLE_SANDBOX=1"
        "QTWEBENGINE_CHROMIUM_FLAGS=--disable-quic --no-first-run --disable-background-networking --disable-component-update --disable-sync")
    math(EXPR timeout "120 * ${VANT_TEST_PATIENCE}")
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${timeout}
        ENVIRONMENT "${environment}")
endfunction()
