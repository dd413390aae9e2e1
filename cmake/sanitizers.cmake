# AddressSanitizer with LeakSanitizer, and UndefinedBehaviourSanitizer that stops at the first finding. Left out are
#   - floating-point division by zero, which IEEE 754 defines and the methods here rely on;
#   - the types of objects behind virtual calls (vptr) and of functions behind pointers (function) at the boundary to the
#     host, which knows no more of the plug-in than its interface.
# An array indexed from another number than zero starts before its memory, on purpose. As its memory is a heap block,
# whose size the pointer does not carry, no check of pointer arithmetic objects; AddressSanitizer watches the accesses.
option(ZN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviourSanitizer" OFF)

if(ZN_SANITIZE)
    add_compile_options(-fsanitize=address,undefined,float-cast-overflow -fno-sanitize=vptr
                        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined,float-cast-overflow)
    if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
        add_compile_options(-fno-sanitize=function)
        add_compile_definitions(__SANITIZE_ADDRESS__) # as g++ does, for tests that measure memory
        # What a fuzzer follows in the code that it is to reach; elsewhere it does nothing.
        set(ZN_FUZZ_COVERAGE -fsanitize-coverage=inline-8bit-counters,pc-table,trace-cmp)
    endif()
endif()
