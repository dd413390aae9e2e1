# zn_add_kernels(library source...)
#
# Compiles each kernel source once for every number of doubles that this platform's processors may handle together (2, 4
# with AVX2, 8 with AVX-512), and adds the objects to the library. The source defines templates over the number of lanes,
# ZN_LANES, and instantiates them for its own. Which one runs is decided at run time: numeric/instruction_set.h.
#
# A kernel source must not use inline functions of other headers that are not always inlined: the linker keeps one copy
# of those, and that could be the one with instructions that the processor lacks.
#
# Windows has the baseline alone: its g++ does not keep the stack aligned for wider registers.
function(zn_add_kernels library)
    set(options_2 "")
    set(options_4 -mavx2)
    set(options_8 -mavx512f -mavx512dq -mprefer-vector-width=512)
    set(lane_counts 2)
    if(WIN32)
        target_compile_definitions(${library} PUBLIC ZN_BASELINE_KERNELS_ONLY)
    else()
        list(APPEND lane_counts 4 8)
    endif()
    foreach(lanes IN LISTS lane_counts)
        set(kernels ${library}_kernels_${lanes})
        add_library(${kernels} OBJECT ${ARGN})
        target_include_directories(${kernels} PRIVATE ${PROJECT_SOURCE_DIR}/src)
        target_compile_definitions(${kernels} PRIVATE ZN_LANES=${lanes})
        target_compile_options(${kernels} PRIVATE ${options_${lanes}})
        target_link_libraries(${kernels} PRIVATE zn_warnings)
        set_target_properties(${kernels} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                                    VISIBILITY_INLINES_HIDDEN ON)
        target_sources(${library} PRIVATE $<TARGET_OBJECTS:${kernels}>)
    endforeach()
endfunction()
