# The archive for Windows users: the plug-in, installation instructions, its licence, and the notices of the runtime
# linked into it. Our own texts get Windows line endings.
include(${CMAKE_CURRENT_LIST_DIR}/plain_text.cmake)
zn_plain_text(${PROJECT_SOURCE_DIR}/docs/desktop.md ${PROJECT_BINARY_DIR}/package/INSTALL.txt)
configure_file(${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_BINARY_DIR}/package/LICENSE.txt @ONLY NEWLINE_STYLE CRLF)
find_file(ZN_MINGW_COPYRIGHT copyright PATHS /usr/share/doc/mingw-w64-common NO_CMAKE_FIND_ROOT_PATH)
if(ZN_MINGW_COPYRIGHT)
    install(FILES ${ZN_MINGW_COPYRIGHT} DESTINATION . RENAME LICENSE-MinGW-w64.txt)
else()
    message(WARNING "The archive will lack the notices of the MinGW-w64 runtime, which is linked into ICAPlugin.dll; "
                    "Debian's package mingw-w64-common has them.")
endif()
install(TARGETS ICAPlugin LIBRARY DESTINATION .)
install(FILES ${PROJECT_BINARY_DIR}/package/INSTALL.txt ${PROJECT_BINARY_DIR}/package/LICENSE.txt DESTINATION .)

set(CPACK_GENERATOR ZIP)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/add_checksums.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/pack_sorted.cmake)
set(CPACK_PACKAGE_FILE_NAME ICAPlugin-${PROJECT_VERSION}-windows-x64)
