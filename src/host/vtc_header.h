#pragma once

#include <cstddef>
#include <cstdint>

namespace zn {

/// Header of the functional time courses (VTC), filled by `znGetHeaderOfVTCOfCurrentVMR`.
///
/// The layout is the host's. The plug-in knows the fields named here; the host writes more than these, and how much
/// more differs between its versions. The generous tail keeps all of it inside the record.
struct VtcHeader {
    std::int32_t validity; ///< -1: no VTC is linked
    std::int32_t volumes;
    std::int32_t unread[2];
    std::int32_t repetitionTime; ///< milliseconds
    std::int32_t xStart, xEnd;   ///< bounding box in anatomical voxels; the end is exclusive
    std::int32_t yStart, yEnd;
    std::int32_t zStart, zEnd;
    std::int32_t resolution; ///< edge of a VTC voxel in anatomical voxels
    std::int32_t dataType;   ///< kFloatData; any other value: signed 16-bit integers
    char hostFields[272];
    char name[4096 - 324]; ///< NUL-terminated text; the host's further fields follow the text
};

constexpr std::int32_t kNoVtc = -1;
constexpr std::int32_t kFloatData = 2;

static_assert(offsetof(VtcHeader, validity) == 0);
static_assert(offsetof(VtcHeader, volumes) == 4);
static_assert(offsetof(VtcHeader, repetitionTime) == 16);
static_assert(offsetof(VtcHeader, xStart) == 20);
static_assert(offsetof(VtcHeader, xEnd) == 24);
static_assert(offsetof(VtcHeader, yStart) == 28);
static_assert(offsetof(VtcHeader, yEnd) == 32);
static_assert(offsetof(VtcHeader, zStart) == 36);
static_assert(offsetof(VtcHeader, zEnd) == 40);
static_assert(offsetof(VtcHeader, resolution) == 44);
static_assert(offsetof(VtcHeader, dataType) == 48);
static_assert(offsetof(VtcHeader, name) == 324);
static_assert(sizeof(VtcHeader) == 4096);

} // namespace zn
