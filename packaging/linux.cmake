# znica with its plug-in as a Debian package (the libraries come from Debian) and as a tarball (the libraries are
# inside). Both hold what `cmake --install` installs; a script per kind adds the rest.
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_PACKAGE_NAME znica)
set(CPACK_PACKAGE_VENDOR "The ICA plug-in developers")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/debian/add_debian_files.cmake
                            ${CMAKE_CURRENT_LIST_DIR}/tarball/add_libraries.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/tarball/pack_sorted.cmake)

# Licences of the plug-in and of the header-only libraries that are compiled in.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE copyright)
foreach(package libcli11-dev nlohmann-json3-dev)
    set(notice /usr/share/doc/${package}/copyright)
    if(EXISTS ${notice})
        file(READ ${notice} text)
        string(APPEND copyright "\n\nznica contains parts of Debian's package ${package}, to which this applies:\n\n${text}")
    else()
        message(STATUS "${notice} does not exist: packages made here lack this notice")
    endif()
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/package/copyright CONTENT "${copyright}" @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/copyright DESTINATION share/doc/znica)

# What runs a study on a cluster. The modes are those of the files whatever the umask of the checkout was.
set(readable OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
set(executable ${readable} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/workflow DESTINATION share/znica FILE_PERMISSIONS ${readable}
        PATTERN array.sbatch PERMISSIONS ${executable}
        PATTERN group.sh PERMISSIONS ${executable}
        PATTERN job-status PERMISSIONS ${executable})

# The tarball: znica-2.0-linux-x86_64.tar.gz
string(TOLOWER "znica-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" CPACK_PACKAGE_FILE_NAME)

# The Debian package: znica_2.0-1_amd64.deb. dpkg-shlibdeps finds the packages that own the libraries.
set(ZN_MAINTAINER "The ICA plug-in developers <ica-plugin@users.noreply.example>"
    CACHE STRING "Name and address in the Debian package")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${ZN_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/bin) # TesmiraZN, part of the package
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"spatial independent component analysis of functional MRI data
znica separates the voxel time courses of an fMRI run (NIfTI) into spatially
independent components by FastICA, computes sixteen values for each of them,
and shows the result in a report that any browser opens without a network.
.
It runs the same plug-in as the desktop application TesmiraZN.")

# Debian's changelog, whose date is that of SOURCE_DATE_EPOCH if it is set.
string(TIMESTAMP debian_date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${PROJECT_BINARY_DIR}/package/changelog @ONLY)
set(CPACK_ZN_CHANGELOG ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set(CPACK_ZN_DEBIAN_CHANGELOG ${PROJECT_BINARY_DIR}/package/changelog)
