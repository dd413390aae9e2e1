# The sources of one target compiled together, up to sixteen at a time: each header is read once for all of them, and
# each template instantiated once, which saves half of the time that the headless host and the tests take to compile.
# Names in the anonymous namespaces of one target must therefore differ. The presets without this option compile every
# source alone, ci-gcc to prove that it includes what it needs.
option(ZN_UNITY "Compile the sources of a target together" OFF)

# zn_unity_build(target): compiles the sources of the target together if ZN_UNITY is set.
function(zn_unity_build target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${ZN_UNITY} UNITY_BUILD_BATCH_SIZE 16)
endfunction()
