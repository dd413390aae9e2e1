#pragma once

#include "input/vtc.h"
#include "numeric/array_owners.h"

namespace zn {

/// Binary templates of the host's volumes of interest (VOIs) in data-matrix voxel order, for matching component maps.
///
/// The VOIs are first drawn on the whole VTC grid, one indicator row each; while the data matrix is extracted, each
/// selected voxel copies its column from there.
class VoiTemplates {
public:
    /// Fetches the VOI set and logs how many VOIs there are. Without VOIs every further call does nothing.
    ///
    ///   loaded   the host has loaded a VOI file
    static VoiTemplates fetch(bool loaded, const Vtc& vtc);

    /// Data-matrix row `row` is grid voxel `gridIndex`.
    void take(long long gridIndex, int row);

    /// Releases the indicator rows once the data matrix is complete.
    void finish() { indicators_.release(); }

    /// Number of VOIs, M; 0 when none are available.
    int count() const { return count_; }

    /// [0..M-1][0..V-1], 1 inside the VOI, 0 outside; null when M is 0.
    float* const* rows() const { return templates_.get(); }

    /// Releases the templates.
    void release() { templates_.release(); }

private:
    int count_ = 0;
    OffsetMatrix<int> indicators_;  // [0..M-1][0..grid voxels-1]
    OffsetMatrix<float> templates_; // [0..M-1][0..V-1]
};

/// Grid index of one VOI voxel, or -1 when it lies outside the grid. Positions are rounded to the nearest VTC voxel,
/// halves round up.
///
///   c                 three coordinates as the host stores them
///   coordinateSpace   kCentredSpace: they run from 128 downwards in the order y, z, x; else: anatomical voxels x, y, z
long long voiVoxelToGridIndex(const int* c, int coordinateSpace, const VtcHeader& header, const Grid& grid);

} // namespace zn
