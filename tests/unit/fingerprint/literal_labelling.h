#pragma once

#include <vector>

namespace zn::test {

/// Labelling by seeds with merging, written out literally with lists: slow, without any shortcut.
struct LiteralLabelling {
    std::vector<int> flags; ///< one per voxel
    int survivors = 0;
};

/// A voxel: its value and grid position.
struct Voxel {
    float value;
    int x, y, z;
};

LiteralLabelling literalLabelling(const std::vector<Voxel>& voxels, float zThreshold, int minClusterSize);

} // namespace zn::test
