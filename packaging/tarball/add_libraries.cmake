# Run by cpack before it packs: every library that znica needs, except those of glibc, goes into lib/znica, where the
# run path of bin/znica finds it, each with the copyright file of its Debian package.
if(NOT CPACK_GENERATOR STREQUAL TGZ)
    return()
endif()
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
set(glibc "^(ld-linux.*|linux-vdso|lib(c|m|mvec|dl|rt|pthread|resolv|util))[.]so")

file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${root}/bin/znica MODULES ${root}/lib/znica/ICAPlugin.so
     RESOLVED_DEPENDENCIES_VAR libraries CONFLICTING_DEPENDENCIES_PREFIX conflicts
     PRE_EXCLUDE_REGEXES ${glibc} "^TesmiraZN$")
if(conflicts_FILENAMES)
    message(FATAL_ERROR "Found in several places: ${conflicts_FILENAMES}")
endif()
foreach(library IN LISTS libraries)
    get_filename_component(name ${library} NAME)
    file(REAL_PATH ${library} file)
    configure_file(${file} ${root}/lib/znica/${name} COPYONLY NO_SOURCE_PERMISSIONS)
    file(RPATH_REMOVE FILE ${root}/lib/znica/${name}) # a run path of its own would replace that of bin/znica

    execute_process(COMMAND dpkg-query -S ${file} OUTPUT_VARIABLE owner ERROR_QUIET)
    if(NOT owner)
        string(REGEX REPLACE "^/usr" "" file ${file}) # listed by its place before /lib became a link
        execute_process(COMMAND dpkg-query -S ${file} OUTPUT_VARIABLE owner COMMAND_ERROR_IS_FATAL ANY)
    endif()
    string(REGEX REPLACE "[:,].*" "" package ${owner})
    execute_process(COMMAND dpkg-query -W ${package} OUTPUT_VARIABLE version COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND versions "${version}")
    file(REAL_PATH /usr/share/doc/${package}/copyright notice)
    configure_file(${notice} ${root}/share/doc/znica/libraries/${package} COPYONLY NO_SOURCE_PERMISSIONS)
endforeach()

list(REMOVE_DUPLICATES versions)
list(JOIN versions "" versions)
file(WRITE ${root}/share/doc/znica/libraries/versions.txt
     "The libraries in lib/znica are those of these Debian packages, whose sources Debian offers:\n\n${versions}")
