# Run by cpack after it has packed: packs the tarball again, since cpack lists files in the order of the disk, with the
# owner who ran it.
if(NOT CPACK_GENERATOR STREQUAL TGZ)
    return()
endif()
set(time now)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(time @$ENV{SOURCE_DATE_EPOCH})
endif()
get_filename_component(parent ${CPACK_TEMPORARY_INSTALL_DIRECTORY} DIRECTORY)
get_filename_component(folder ${CPACK_TEMPORARY_INSTALL_DIRECTORY} NAME)
execute_process(COMMAND tar --create --sort=name --owner=root:0 --group=root:0 --mode=u=rwX,go=rX --mtime=${time}
                        --format=gnu --directory=${parent} ${folder}
                COMMAND gzip -n OUTPUT_FILE ${CPACK_TEMPORARY_PACKAGE_FILE_NAME} COMMAND_ERROR_IS_FATAL ANY)
