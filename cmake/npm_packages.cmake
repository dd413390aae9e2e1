# zn_npm_packages(stamp comment)
#
# Installs what package-lock.json of the current folder lists, once and again whenever it changes, and sets `stamp` to
# the file to depend on, which npm writes last.
function(zn_npm_packages stamp comment)
    set(modules ${CMAKE_CURRENT_SOURCE_DIR}/node_modules/.package-lock.json)
    add_custom_command(OUTPUT ${modules}
        COMMAND ${ZN_NPM} ci --ignore-scripts --no-audit --no-fund --loglevel=error
        COMMAND ${CMAKE_COMMAND} -E touch ${modules}
        DEPENDS package.json package-lock.json
        WORKING_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}
        COMMENT ${comment} VERBATIM)
    set(${stamp} ${modules} PARENT_SCOPE)
endfunction()
