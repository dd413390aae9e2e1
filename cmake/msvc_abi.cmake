# zn_add_msvc_sources(target source...)
#
# Adds C++ sources to a target of the MinGW build that clang compiles for the Microsoft x64 C++ ABI: name mangling,
# virtual tables and calling conventions are those of the Microsoft compiler. There is no standard library for these
# sources; they communicate with the rest of the target through functions with C linkage.
function(zn_add_msvc_sources target)
    foreach(source IN LISTS ARGN)
        set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.msvc/${source}.obj)
        # GNU ld cannot read the export directives that clang writes for this target; exports.def replaces them.
        zn_add_clang_object(${target} ${source} ${object} FOR x86_64-pc-windows-msvc
                            OPTIONS -fno-rtti -fno-exceptions -O2 -I ${PROJECT_SOURCE_DIR}/src/plugin/msvc_runtime
                                    -I ${PROJECT_SOURCE_DIR}/tests
                            THEN COMMAND ${CMAKE_OBJCOPY} --remove-section=.drectve ${object})
    endforeach()
endfunction()
