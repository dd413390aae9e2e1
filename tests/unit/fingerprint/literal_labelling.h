#pragma once

#include <vector>

namespace zn::test {

/// What labelling by seeds with merging is, word for word with lists: slow, and free of any shortcut.
struct LiteralLabelling {
    std::vector<int> flags; ///< one a voxel
    int survivors = 0;
};

/// A voxel: its value and grid position.
struct Voxel {
    float value;
    int x, y, z;
};

LiteralLabelling literalLabelling(const std::vector<Voxel>& voxels, float zThreshold, int minClusterSize);

} // namespace zn::test
