# Precompiled headers save about a quarter of the time that the tests and the headless host take to compile. Every
# source includes what it needs all the same: the presets ci-gcc and windows build without them, the latter because with
# them MinGW's g++ 12 sees copies beyond the end of short strings where there are none.

# zn_shared_headers(name HEADERS <header>... USES library...)
#
# A set of headers that is compiled once for all the targets that reuse it. Compilers accept it only with the flags that
# it was compiled with: the optimisation, -fPIC and the visibility must be those of the target.
function(zn_shared_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;USES")
    file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "") # touched only if it changes
    add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    target_link_libraries(${name} PRIVATE ${arg_USES} zn_warnings)
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
    # The same bytes at every build, so that ccache knows what was compiled with them.
    target_compile_options(${name} PRIVATE "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endfunction()

# zn_reuse_headers(name folder): every static library below the folder uses the shared headers `name`.
function(zn_reuse_headers name folder)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type STREQUAL STATIC_LIBRARY)
            target_precompile_headers(${target} REUSE_FROM ${name})
        endif()
    endforeach()
    get_property(subfolders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(subfolder IN LISTS subfolders)
        zn_reuse_headers(${name} ${subfolder})
    endforeach()
endfunction()
