# What cpack makes: for Linux a Debian package and a tarball that needs no installation, for Windows a zip file.
# packaging/README.md has the reasons; packaging/release makes all of them.
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_THREADS 1) # compressed in pieces by several threads, the bytes would depend on their number

if(WIN32)
    include(${PROJECT_SOURCE_DIR}/packaging/windows/package.cmake)
elseif(ZN_HEADLESS)
    include(${PROJECT_SOURCE_DIR}/packaging/linux.cmake)
endif()
if(CPACK_GENERATOR)
    include(CPack)
endif()
