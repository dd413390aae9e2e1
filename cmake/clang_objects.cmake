# zn_add_clang_object(target source object FOR triple OPTIONS option...)
#
# Compiles one source of the MinGW build by clang for the target triple and links the object into `target`. The standard
# library's headers are not available to it.
find_program(ZN_CLANG clang++ REQUIRED)

function(zn_add_clang_object target source object)
    cmake_parse_arguments(PARSE_ARGV 3 arg "" "FOR" "OPTIONS;THEN")
    get_filename_component(path ${source} ABSOLUTE)
    get_filename_component(folder ${object} DIRECTORY)
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(
        OUTPUT ${object}
        COMMAND ${ZN_CLANG} --target=${arg_FOR} -std=c++20 -ffreestanding -nostdinc++ ${arg_OPTIONS} -Wall -Wextra
                -Wpedantic -Wconversion $<$<BOOL:${ZN_WERROR}>:-Werror> -I ${PROJECT_SOURCE_DIR}/src
                -MD -MF ${object}.d -MT ${object} -c ${path} -o ${object}
        ${arg_THEN}
        DEPENDS ${path}
        DEPFILE ${object}.d
        COMMENT "Compiling ${source} for ${arg_FOR}"
        COMMAND_EXPAND_LISTS VERBATIM)
    set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
    target_sources(${target} PRIVATE ${object})
endfunction()
