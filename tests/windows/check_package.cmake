# cmake -D cpack=<program> -D build=<folder> -D folder=<name> -P check_package.cmake
#
# Checks that the archive holds the tested plug-in, installation instructions as plain text, the licences and the right
# checksums.
cmake_minimum_required(VERSION 3.25)

set(scratch ${build}/tests/windows/package)
file(REMOVE_RECURSE ${scratch})
execute_process(COMMAND ${cpack} -G ZIP -B ${scratch} WORKING_DIRECTORY ${build} COMMAND_ERROR_IS_FATAL ANY)
file(ARCHIVE_EXTRACT INPUT ${scratch}/${folder}.zip DESTINATION ${scratch}/content)

file(GLOB_RECURSE found RELATIVE ${scratch}/content ${scratch}/content/*)
list(SORT found)
set(wanted ${folder}/ICAPlugin.dll ${folder}/INSTALL.txt ${folder}/LICENSE-MinGW-w64.txt ${folder}/LICENSE.txt
           ${folder}/SHA256SUMS.txt)
if(NOT "${found}" STREQUAL "${wanted}")
    message(FATAL_ERROR "The archive holds: ${found}")
endif()

file(SHA256 ${build}/lib/ICAPlugin.dll tested)
file(SHA256 ${scratch}/content/${folder}/ICAPlugin.dll packed)
if(NOT tested STREQUAL packed)
    message(FATAL_ERROR "The ICAPlugin.dll in the archive is not the one that was tested.")
endif()

set(manual ${scratch}/content/${folder}/INSTALL.txt)
execute_process(COMMAND grep --max-count=1 --invert-match "\r$" ${manual} RESULT_VARIABLE all_end_so)
execute_process(COMMAND grep --extended-regexp "[*][*]|`|\\]\\(|^#" ${manual} RESULT_VARIABLE no_markdown)
if(NOT all_end_so EQUAL 1 OR NOT no_markdown EQUAL 1)
    message(FATAL_ERROR "INSTALL.txt is not plain text with Windows line endings.")
endif()

execute_process(COMMAND sha256sum --check --strict --quiet - WORKING_DIRECTORY ${scratch}/content/${folder}
                COMMAND_ERROR_IS_FATAL ANY INPUT_FILE ${scratch}/content/${folder}/SHA256SUMS.txt)
