# cmake -D prefix=<folder> -P link_wine_libraries.cmake
#
# A fresh Wine prefix contains a copy of every library that Wine ships, 700 MB in all. With links in their place it
# takes 20 MB.
file(GLOB originals /usr/lib/*/wine/x86_64-windows/* /opt/wine*/lib*/wine/x86_64-windows/*)
foreach(original IN LISTS originals)
    get_filename_component(name ${original} NAME)
    set(original_of_${name} ${original})
endforeach()

file(GLOB_RECURSE copies ${prefix}/drive_c/windows/*)
foreach(copy IN LISTS copies)
    get_filename_component(name ${copy} NAME)
    if(NOT original_of_${name} OR IS_SYMLINK ${copy})
        continue()
    endif()
    file(SIZE ${original_of_${name}} wanted)
    file(SIZE ${copy} found)
    if(wanted EQUAL found)
        file(CREATE_LINK ${original_of_${name}} ${copy} SYMBOLIC)
    endif()
endforeach()
