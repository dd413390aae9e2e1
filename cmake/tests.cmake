# zn_add_test(name SOURCES file... USES library... [LABELS label...] [COST seconds])
#
# One GoogleTest program, compiled with the warnings of our own code. CTest lists each of its tests; a program for
# another platform is a single test, because starting it takes a second. Tests with a COST start first, so that at the
# end of a parallel run only short ones are left.
set(ZN_TEST_OPTIONS "$<$<CONFIG:Release>:-O1>") # compiles in two thirds of the time, and the tests take as long

if(CMAKE_CROSSCOMPILING)
    include(wine)
    set(ZN_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's sources, as Debian installs them")
    set(INSTALL_GTEST OFF)
    add_subdirectory(${ZN_GOOGLETEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    foreach(library gmock gtest gtest_main)
        target_compile_options(${library} PRIVATE ${ZN_TEST_OPTIONS})
    endforeach()
else()
    find_package(GTest REQUIRED)
endif()
include(GoogleTest)

zn_shared_headers(test_headers
    HEADERS <gmock/gmock.h> <gtest/gtest.h> <algorithm> <filesystem> <functional> <string> <vector>
    USES GTest::gmock)
target_compile_options(test_headers PRIVATE ${ZN_TEST_OPTIONS})

# Prefix of this machine's absolute paths in a test program: Wine shows / as a drive.
if(CMAKE_CROSSCOMPILING)
    set(ZN_TEST_ROOT "Z:")
else()
    set(ZN_TEST_ROOT "")
endif()

function(zn_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "COST" "SOURCES;USES;LABELS")
    if(NOT arg_COST)
        set(arg_COST 0)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${arg_USES} zn_warnings GTest::gmock GTest::gtest_main)
    target_compile_options(${name} PRIVATE ${ZN_TEST_OPTIONS})
    target_precompile_headers(${name} REUSE_FROM test_headers)
    zn_unity_build(${name})
    if(CMAKE_CROSSCOMPILING)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES COST ${arg_COST} LABELS "${arg_LABELS}")
    else()
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES COST ${arg_COST} LABELS "${arg_LABELS}")
    endif()
endfunction()
