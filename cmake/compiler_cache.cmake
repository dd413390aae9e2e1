# Compiles through ccache where it is installed; -DZN_CCACHE=OFF does without. Precompiled headers are cached under two
# conditions: macros such as __TIME__ in them may be ignored, and so may macros that are defined but not used there.
find_program(ZN_CCACHE ccache)
if(ZN_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ${ZN_CCACHE})
endif()
