# AddressSanitizer with LeakSanitizer, and UndefinedBehaviourSanitizer that stops at the first finding. The division
# of a float by zero is defined by IEEE 754 and part of the methods here, so it is not among the checks; nor is the type
# of an object behind a virtual call, which a host cannot know beyond the interface it was promised.
option(ZN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviourSanitizer" OFF)

if(ZN_SANITIZE)
    add_compile_options(-fsanitize=address,undefined,float-cast-overflow -fno-sanitize=vptr
                        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined,float-cast-overflow)
endif()
