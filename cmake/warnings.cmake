# Warnings for our own code. ZN_WERROR makes them errors. Only the CI presets switch it on, so that a new warning of a
# newer compiler never keeps a user from building.
option(ZN_WERROR "Treat warnings as errors" OFF)

add_library(zn_warnings INTERFACE)
target_compile_options(zn_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion $<$<BOOL:${ZN_WERROR}>:-Werror>)
# g++ 12 sees overlapping copies in `"text" + std::string` where there are none (GCC bug 105651, fixed in 13).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(zn_warnings INTERFACE -Wno-restrict)
    if(NOT CMAKE_DISABLE_PRECOMPILE_HEADERS) # with them it also sees copies longer than any string
        target_compile_options(zn_warnings INTERFACE -Wno-array-bounds -Wno-stringop-overflow)
    endif()
endif()
