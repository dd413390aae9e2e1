#include "fingerprint/threshold_points.h"

#include <cmath>
#include <limits>

namespace zn {

namespace {

constexpr int kBlock = 32; // points that a test along a single axis can rule out together

int countAbove(const float* values, int v, float zThreshold) {
    int count = 0;
    for (int i = 0; i < v; ++i) count += values[i] > zThreshold ? 1 : 0;
    return count;
}

int padded(int count) {
    return (count + kBlock - 1) / kBlock * kBlock;
}

// All bits set where the coordinate is the centre or one step from it, else 0: the form of a vector comparison.
int nearMask(float coordinate, float centre) {
    return std::fabs(coordinate - centre) <= 1.0f ? -1 : 0;
}

bool anyNear(const float* block, float centre) {
    int any = 0;
    for (int j = 0; j < kBlock; ++j) any |= nearMask(block[j], centre);
    return any != 0;
}

} // namespace

ThresholdPoints::ThresholdPoints(const float* values, const int* const* coordinates, int v, float zThreshold)
    : count_(countAbove(values, v, zThreshold)), voxels_(0, count_ - 1), x_(0, padded(count_) - 1),
      y_(0, padded(count_) - 1), z_(0, padded(count_) - 1) {
    int point = 0;
    for (int i = 0; i < v; ++i) {
        if (!(values[i] > zThreshold)) continue;
        voxels_[point] = i;
        x_[point] = static_cast<float>(coordinates[i][0]);
        y_[point] = static_cast<float>(coordinates[i][1]);
        z_[point] = static_cast<float>(coordinates[i][2]);
        ++point;
    }
    for (; point < padded(count_); ++point) {
        x_[point] = y_[point] = z_[point] = std::numeric_limits<float>::infinity();
    }
}

int ThresholdPoints::findNeighbourhood(int seed, int* neighbours) const {
    const float cx = x_[seed];
    const float cy = y_[seed];
    const float cz = z_[seed];
    int found = 0;
    for (int first = 0; first < count_; first += kBlock) {
        const float* z = z_.get() + first;
        if (!anyNear(z, cz)) continue; // in scan order z changes slowest: most blocks end here
        const float* x = x_.get() + first;
        const float* y = y_.get() + first;
        int inside[kBlock];
        int any = 0;
        for (int j = 0; j < kBlock; ++j) {
            inside[j] = nearMask(x[j], cx) & nearMask(y[j], cy) & nearMask(z[j], cz);
            any |= inside[j];
        }
        for (int j = 0; any != 0 && j < kBlock; ++j) {
            if (inside[j] != 0) neighbours[found++] = first + j;
        }
    }
    return found;
}

} // namespace zn
