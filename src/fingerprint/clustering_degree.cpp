#include "fingerprint/clustering_degree.h"

#include "fingerprint/label_clusters.h"
#include "numeric/array_owners.h"

#include <algorithm>
#include <cmath>

namespace zn {

namespace {

// Supra-threshold voxels, and how many of them lie in surviving clusters.
struct Tally {
    int above = 0;
    int clustered = 0;
};

class HalfMaps {
public:
    HalfMaps(const int* const* coordinates, int v, float zThreshold, int minClusterSize)
        : coordinates_(coordinates), v_(v), zThreshold_(zThreshold), minClusterSize_(minClusterSize), half_(0, v - 1),
          flags_(0, v - 1) {}

    // Adds the voxels whose value has the given sign, 1 or -1.
    void count(const float* map, float sign, Tally& tally) {
        int above = 0;
        for (int i = 0; i < v_; ++i) {
            const float value = sign * map[i];
            half_[i] = value > 0 ? value : 0.0f;
            above += std::fabs(half_[i]) > zThreshold_ ? 1 : 0;
        }
        if (above == 0) return;
        labelClusters(half_.get(), coordinates_, v_, zThreshold_, minClusterSize_, flags_.get());
        const auto clustered = std::count_if(flags_.get(), flags_.get() + v_, [](int flag) { return flag > 0; });
        tally.above += above;
        tally.clustered += static_cast<int>(clustered);
    }

private:
    const int* const* coordinates_;
    int v_;
    float zThreshold_;
    int minClusterSize_;
    OffsetVector<float> half_;
    OffsetVector<int> flags_;
};

} // namespace

void clusteringDegree(const float* const* maps, const int* const* coordinates, int k, int v, float zThreshold,
                      int minClusterSize, float* degree) {
    HalfMaps halves(coordinates, v, zThreshold, minClusterSize);
    for (int i = 0; i < k; ++i) {
        Tally tally;
        halves.count(maps[i], 1, tally);
        halves.count(maps[i], -1, tally);
        degree[i] = static_cast<float>(static_cast<double>(tally.clustered) / static_cast<double>(tally.above));
    }
}

} // namespace zn
