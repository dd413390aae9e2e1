# cmake -D objdump=<program> -D file=<library> -D list=<.def file> -P check_exports.cmake
#
# Checks the names that the library exports against the written list: nothing missing, nothing more.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${objdump} -p ${file} OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "^.*\\[Ordinal/Name Pointer\\] Table" "" table "${table}")
string(REGEX REPLACE "\n\n.*$" "" table "${table}")
string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\n]+" found "${table}")
list(TRANSFORM found REPLACE "^\\[ *[0-9]+\\] " "")
list(SORT found)

file(STRINGS ${list} wanted REGEX "^ ")
list(TRANSFORM wanted REPLACE " DATA$" "")
list(TRANSFORM wanted REPLACE "[ \"]" "")
list(SORT wanted)

list(LENGTH found count)
if(count EQUAL 0 OR NOT "${found}" STREQUAL "${wanted}")
    list(JOIN found "\n  " found)
    list(JOIN wanted "\n  " wanted)
    message(FATAL_ERROR "${file} exports\n  ${found}\nand should export\n  ${wanted}")
endif()
message("${count} names, as listed")
