# zn_add_msvc_sources(target source...)
#
# Adds C++ sources to a target of the MinGW build that clang compiles for the Microsoft x64 C++ ABI: names, layout of
# virtual tables and calls are those of a program built with the Microsoft compiler. There is no standard library for
# these sources; they talk to the rest of the target through functions with C linkage.
find_program(ZN_CLANG clang++ REQUIRED)

function(zn_add_msvc_sources target)
    foreach(source IN LISTS ARGN)
        get_filename_component(path ${source} ABSOLUTE)
        set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.msvc/${source}.obj)
        get_filename_component(folder ${object} DIRECTORY)
        file(MAKE_DIRECTORY ${folder})
        # GNU ld cannot read the export directives that clang writes for this target: exports.def stands for them.
        add_custom_command(
            OUTPUT ${object}
            COMMAND ${ZN_CLANG} --target=x86_64-pc-windows-msvc -std=c++20 -ffreestanding -nostdinc++ -fno-rtti
                    -fno-exceptions -O2 -Wall -Wextra -Wpedantic -Wconversion $<$<BOOL:${ZN_WERROR}>:-Werror>
                    -I ${PROJECT_SOURCE_DIR}/src -I ${PROJECT_SOURCE_DIR}/src/plugin/msvc_runtime
                    -I ${PROJECT_SOURCE_DIR}/tests -MD -MF ${object}.d -MT ${object} -c ${path} -o ${object}
            COMMAND ${CMAKE_OBJCOPY} --remove-section=.drectve ${object}
            DEPENDS ${path}
            DEPFILE ${object}.d
            COMMENT "Compiling ${source} for the Microsoft C++ ABI"
            COMMAND_EXPAND_LISTS VERBATIM)
        set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
        target_sources(${target} PRIVATE ${object})
    endforeach()
endfunction()
