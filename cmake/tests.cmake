# zn_add_test(name SOURCES file... USES library...)
#
# One GoogleTest program, compiled with the warnings of our own code; CTest lists every single test of it.
find_package(GTest REQUIRED)
include(GoogleTest)

function(zn_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_USES} zn_warnings GTest::gmock GTest::gtest_main)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
endfunction()
