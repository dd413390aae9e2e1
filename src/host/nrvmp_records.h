#pragma once

#include <cstddef>
#include <cstdint>

namespace zn {

/// Header of the volume maps (NR-VMPs) of the current anatomical volume. All text buffers belong to the host.
///
/// The layout is the host's; the plug-in uses only the named fields. The tail is there because the host fills its whole
/// record through the pointer it is given, and that record extends beyond the last field named here by an amount that
/// differs between host versions.
struct NRVMPsHeader {
    char hostFields1[316];
    std::int32_t parameterDisplayRange[4];
    char hostFields2[4];
    char* firstName;
    char* secondName;
    char* thirdName;
    std::int32_t boundingBox[6]; ///< X start, X end, Y start, Y end, Z start, Z end in anatomical voxels
    std::int32_t resolution;     ///< edge of a map voxel in anatomical voxels
    char hostFields3[4];
    char** parameterNames; ///< one buffer per map parameter
    char hostTail[4096 - 400];
};

// In WebAssembly both sides of the interface are linked together, so any layout will do there.
#ifndef __wasm__
static_assert(sizeof(void*) == 8, "the host's records are those of its 64-bit build");
static_assert(offsetof(NRVMPsHeader, parameterDisplayRange) == 316);
static_assert(offsetof(NRVMPsHeader, firstName) == 336);
static_assert(offsetof(NRVMPsHeader, secondName) == 344);
static_assert(offsetof(NRVMPsHeader, thirdName) == 352);
static_assert(offsetof(NRVMPsHeader, boundingBox) == 360);
static_assert(offsetof(NRVMPsHeader, resolution) == 384);
static_assert(offsetof(NRVMPsHeader, parameterNames) == 392);
static_assert(sizeof(NRVMPsHeader) == 4096);
#endif

/// One volume map. Its voxel values are not a field: `znGetNRVMPOfCurrentVMR` returns them. The tail is as above.
struct NRVMPMap {
    char* name;
    std::int32_t type;
    char hostFields1[76];
    float* timeCourse; ///< one value per volume; may be null
    float* parameters; ///< sixteen values; may be null
    char hostTail[4096 - 104];
};

#ifndef __wasm__
static_assert(offsetof(NRVMPMap, name) == 0);
static_assert(offsetof(NRVMPMap, type) == 8);
static_assert(offsetof(NRVMPMap, timeCourse) == 88);
static_assert(offsetof(NRVMPMap, parameters) == 96);
static_assert(sizeof(NRVMPMap) == 4096);
#endif

} // namespace zn
