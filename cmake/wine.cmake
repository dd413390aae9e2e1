# Runs the Windows test programs with Wine: without a display and with a separate Windows drive in the build folder,
# created by the first build.
find_program(ZN_WINE NAMES wine64 wine HINTS /usr/lib/wine REQUIRED)
find_program(ZN_WINESERVER NAMES wineserver64 wineserver HINTS /usr/lib/wine REQUIRED)

set(wine_prefix ${PROJECT_BINARY_DIR}/wine)
set(wine_environment
    env -u DISPLAY -u WAYLAND_DISPLAY LC_ALL=C.UTF-8 WINEDEBUG=-all WINEPREFIX=${wine_prefix}
    WINEDLLOVERRIDES=mscoree,mshtml,winemenubuilder.exe= # no offers to install browsers, nothing in the user's menus
)
set(CMAKE_CROSSCOMPILING_EMULATOR ${wine_environment} ${ZN_WINE})

add_custom_command(
    OUTPUT ${wine_prefix}/system.reg
    COMMAND ${wine_environment} ${ZN_WINE} wineboot --init > ${PROJECT_BINARY_DIR}/wineboot.log 2>&1
    COMMAND ${wine_environment} ${ZN_WINESERVER} -w
    COMMAND ${CMAKE_COMMAND} -D prefix=${wine_prefix} -P ${CMAKE_CURRENT_LIST_DIR}/link_wine_libraries.cmake
    COMMENT "Creating Wine's Windows drive"
    VERBATIM)
add_custom_target(wine_prefix ALL DEPENDS ${wine_prefix}/system.reg)
