#pragma once

#include <cstddef>
#include <cstdint>

namespace zn {

/// Header of the host's set of volumes of interest (VOIs), filled by `znGetVOIs`. The layout is the host's; the tail
/// leaves room for the fields that the host writes beyond the named ones.
struct VoiSetHeader {
    std::int32_t count;
    char hostFields[268];
    std::int32_t coordinateSpace; ///< kCentredSpace: coordinates run from 128 downwards, see voi_templates.h
    char hostTail[4096 - 276];
};

constexpr std::int32_t kCentredSpace = 3;

static_assert(offsetof(VoiSetHeader, count) == 0);
static_assert(offsetof(VoiSetHeader, coordinateSpace) == 272);
static_assert(sizeof(VoiSetHeader) == 4096);

/// One volume of interest, filled by `znGetVOI`, which returns its voxels as three 32-bit coordinates each.
struct VoiHeader {
    std::int32_t voxels;
    char hostTail[4096 - 4];
};

static_assert(offsetof(VoiHeader, voxels) == 0);
static_assert(sizeof(VoiHeader) == 4096);

} // namespace zn
