# cmake -D cpack=<program> -D build=<folder> -D folder=<name> -P check_package.cmake
#
# The archive holds the plug-in as it was tested, how to install it, and the licences.
cmake_minimum_required(VERSION 3.25)

set(scratch ${build}/tests/windows/package)
file(REMOVE_RECURSE ${scratch})
execute_process(COMMAND ${cpack} -G ZIP -B ${scratch} WORKING_DIRECTORY ${build} COMMAND_ERROR_IS_FATAL ANY)
file(ARCHIVE_EXTRACT INPUT ${scratch}/${folder}.zip DESTINATION ${scratch}/content)

file(GLOB_RECURSE found RELATIVE ${scratch}/content ${scratch}/content/*)
list(SORT found)
set(wanted ${folder}/ICAPlugin.dll ${folder}/INSTALL.txt ${folder}/LICENSE-MinGW-w64.txt ${folder}/LICENSE.txt)
if(NOT "${found}" STREQUAL "${wanted}")
    message(FATAL_ERROR "The archive holds: ${found}")
endif()

file(SHA256 ${build}/lib/ICAPlugin.dll tested)
file(SHA256 ${scratch}/content/${folder}/ICAPlugin.dll packed)
if(NOT tested STREQUAL packed)
    message(FATAL_ERROR "The archive holds another ICAPlugin.dll than the one that is tested.")
endif()
