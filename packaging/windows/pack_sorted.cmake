# Run by cpack after it has packed: packs the archive again, since cpack lists files in the order of the disk.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
get_filename_component(parent ${root} DIRECTORY)
file(GLOB files RELATIVE ${parent} ${root}/*)
list(SORT files)
file(REMOVE ${CPACK_TEMPORARY_PACKAGE_FILE_NAME})
execute_process(COMMAND ${CMAKE_COMMAND} -E tar c ${CPACK_TEMPORARY_PACKAGE_FILE_NAME} --format=zip ${files}
                WORKING_DIRECTORY ${parent} COMMAND_ERROR_IS_FATAL ANY)
