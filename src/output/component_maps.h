#pragma once

#include "host/vtc_header.h"

#include <array>

namespace zn {

constexpr int kMapParameters = 16;
constexpr int kPowerBands = 5;

/// What goes into the host's maps; nothing is owned. K components, T volumes, V selected voxels.
struct ComponentResults {
    int components; ///< K
    int volumes;    ///< T
    int gridX, gridY, gridZ;
    const unsigned char* mask; ///< one byte per grid voxel, nonzero: inside; null: every voxel is inside
    float* const* maps;        ///< [0..K-1][0..V-1], voxels in grid order
    float* const* timeCourses; ///< [0..T-1][0..K-1], each column rescaled to 0..1
    /// The first eleven map parameters, each [0..K-1], in the order of the parameter names.
    std::array<const float*, kMapParameters - kPowerBands> parameters;
    float* const* bands; ///< [0..K-1][0..4], the last five map parameters
};

/// Texts of the map set's header.
struct MapSetNames {
    const char* vtcFile;
    const char* vtcName; ///< the text in the VTC header
    const char* voiFile; ///< empty when none was given
};

/// Replaces the volume maps of the current anatomical volume by one map per component: creates them, names them after
/// the label that the user is asked for, fills values, time courses and parameters, and sets how the parameters are
/// shown. Writes through the pointers that the host hands out; a null pointer is skipped. The busy cursor is stopped
/// for the question and shown again.
void handMapsToHost(const VtcHeader& vtc, const ComponentResults& results, const MapSetNames& names);

} // namespace zn
