# cmake -D objdump=<program> -D file=<library> -P check_imports.cmake
#
# Checks that the library needs only what every Windows has.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${objdump} -p ${file} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]+" found "${table}")
list(TRANSFORM found REPLACE "^DLL Name: " "")
list(TRANSFORM found TOLOWER)

set(strangers ${found})
list(FILTER strangers EXCLUDE REGEX "^(kernel32|msvcrt|ucrtbase|api-ms-win-crt-[a-z]+-l1-1-0)\\.dll$")
if(NOT "kernel32.dll" IN_LIST found OR strangers)
    message(FATAL_ERROR "${file} imports from: ${found}")
endif()
message("imports from: ${found}")
