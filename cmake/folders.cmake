# zn_add_library(name SOURCES file... USES library...)
#
# One folder of the plug-in as a static library. USES is who may include whom: docs/architecture.md has the table, and
# the test IncludeRules checks every #include against it.
function(zn_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE zn_warnings)
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                             VISIBILITY_INLINES_HIDDEN ON)
endfunction()
