# Run by cpack before it packs: what Debian wants in a package and other installations do not have.
if(NOT CPACK_GENERATOR STREQUAL DEB)
    return()
endif()
set(share ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share)

configure_file(${CMAKE_CURRENT_LIST_DIR}/lintian-overrides ${share}/lintian/overrides/znica COPYONLY NO_SOURCE_PERMISSIONS)
configure_file(${CPACK_ZN_CHANGELOG} ${share}/doc/znica/changelog COPYONLY NO_SOURCE_PERMISSIONS)
configure_file(${CPACK_ZN_DEBIAN_CHANGELOG} ${share}/doc/znica/changelog.Debian COPYONLY NO_SOURCE_PERMISSIONS)
file(GLOB pages ${share}/man/man1/*.1)
# -n: no time stamp in the compressed file
execute_process(COMMAND gzip -9n ${pages} ${share}/doc/znica/changelog ${share}/doc/znica/changelog.Debian
                COMMAND_ERROR_IS_FATAL ANY)

# What was made here has the permissions that the umask left.
file(CHMOD_RECURSE ${share} FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
     DIRECTORY_PERMISSIONS ${CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
