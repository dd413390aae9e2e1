# cmake -D windres=<program> -D file=<library> -D version=<version> -P check_version.cmake
#
# Checks what Windows shows in the properties of the library.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${windres} --input ${file} --input-format coff --output-format rc OUTPUT_VARIABLE resource
                COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "." ", " numbers ${version})
foreach(line "FILEVERSION ${numbers}, 0, 0" "\"ProductVersion\", \"${version}\"" "\"OriginalFilename\", \"ICAPlugin.dll\"")
    string(FIND "${resource}" "${line}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "${file} does not say ${line}:\n${resource}")
    endif()
endforeach()
