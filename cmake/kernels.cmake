# zn_add_kernels(library source...)
#
# Compiles each kernel source once for every number of doubles that this platform's processors may handle together (2, 4
# with AVX2, 8 with AVX-512), and adds the objects to the library. The source defines templates over the number of lanes
# and instantiates them for ZN_LANES. Which one runs is decided at run time: numeric/instruction_set.h.
#
# A kernel source must not use inline functions from other headers unless they are always inlined: the linker keeps one
# copy of each, which could be the one with instructions that the processor lacks. Nor may it include a header of the
# standard library: for Windows the wider forms are compiled by clang, which has none there, because MinGW's g++ does
# not keep the stack aligned for their registers.
set(ZN_KERNEL_OPTIONS_2 "")
set(ZN_KERNEL_OPTIONS_4 -mavx2)
set(ZN_KERNEL_OPTIONS_8 -mavx512f -mavx512dq -mprefer-vector-width=512)

function(zn_add_kernels library)
    set(forms 2 4 8)
    if(EMSCRIPTEN)
        set(forms 2) # the only vectors that WebAssembly has
    endif()
    foreach(lanes IN LISTS forms)
        set(options -DZN_LANES=${lanes} ${ZN_KERNEL_OPTIONS_${lanes}})
        if(WIN32 AND lanes GREATER 2)
            foreach(source IN LISTS ARGN)
                zn_add_clang_object(${library} ${source}
                                    ${CMAKE_CURRENT_BINARY_DIR}/${library}.kernels/${source}.${lanes}.obj
                                    FOR x86_64-w64-windows-gnu OPTIONS -O3 -ffp-contract=off ${options})
            endforeach()
            continue()
        endif()
        set(kernels ${library}_kernels_${lanes})
        add_library(${kernels} OBJECT ${ARGN})
        target_include_directories(${kernels} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/src)
        target_compile_options(${kernels} PRIVATE ${options})
        target_link_libraries(${kernels} PRIVATE zn_warnings)
        set_target_properties(${kernels} PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                                    VISIBILITY_INLINES_HIDDEN ON)
        target_sources(${library} PRIVATE $<TARGET_OBJECTS:${kernels}>)
    endforeach()
endfunction()
