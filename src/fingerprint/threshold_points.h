#pragma once

#include "numeric/array_owners.h"

namespace zn {

/// The points of one half-map that exceed the threshold, in voxel order, ready for linear scans: the coordinates as
/// floats in one contiguous array per axis, padded to whole blocks with points that have no neighbours.
class ThresholdPoints {
public:
    /// values [0..v-1] and coordinates [0..v-1][0..2] (magnitudes below 2^24, exact as floats) of v voxels; keeps the
    /// voxels with a value strictly above zThreshold.
    ThresholdPoints(const float* values, const int* const* coordinates, int v, float zThreshold);

    int count() const { return count_; }
    /// The voxel that point i stands for.
    int voxel(int i) const { return voxels_[i]; }

    /// Finds the points of the 3 x 3 x 3 cube around point `seed`, itself included.
    ///
    ///   neighbours  [0..count()-1]  out: their numbers, ascending
    ///
    /// Returns how many there are. One scan of the whole list.
    int findNeighbourhood(int seed, int* neighbours) const;

private:
    int count_;
    OffsetVector<int> voxels_;
    OffsetVector<float> x_;
    OffsetVector<float> y_;
    OffsetVector<float> z_;
};

} // namespace zn
