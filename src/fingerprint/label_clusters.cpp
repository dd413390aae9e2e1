#include "fingerprint/label_clusters.h"

#include "fingerprint/threshold_points.h"
#include "numeric/array_owners.h"

#include <algorithm>

namespace zn {

namespace {

// Which cluster every point belongs to. A point keeps the label it was given; a table maps each label to its current
// cluster, so that a merge updates the labels and not the points.
class Labels {
public:
    explicit Labels(int points) : label_(0, points - 1), cluster_(0, points) {
        label_.fill(0);
        cluster_[0] = 0;
    }

    bool isFree(int point) const { return label_[point] == 0; }
    void openCluster() {
        ++last_;
        cluster_[last_] = last_;
    }
    void give(int point) { label_[point] = last_; }
    void mergeClusterOf(int point) {
        const int merged = cluster_[label_[point]];
        if (merged == last_) return;
        int* cluster = cluster_.get();
        for (int label = 1; label < last_; ++label) cluster[label] = cluster[label] == merged ? last_ : cluster[label];
    }

    int clusterOf(int point) const { return cluster_[label_[point]]; }
    int last() const { return last_; }

private:
    OffsetVector<int> label_;   // [0..points-1], 0 = none
    OffsetVector<int> cluster_; // [0..points], by label
    int last_ = 0;
};

// The order within the neighbourhood does not matter: its free points get the new label, and the clusters of its
// labelled points are merged into the new one.
void growFrom(int seed, const ThresholdPoints& points, Labels& labels, int* neighbours) {
    labels.openCluster();
    labels.give(seed);
    const int found = points.findNeighbourhood(seed, neighbours);
    for (int i = 0; i < found; ++i) {
        if (labels.isFree(neighbours[i])) {
            labels.give(neighbours[i]);
        } else {
            labels.mergeClusterOf(neighbours[i]);
        }
    }
}

// Flags the points of clusters of at least minClusterSize; returns the number of these clusters.
int flagSurvivors(const ThresholdPoints& points, const Labels& labels, int minClusterSize, int* flags) {
    OffsetVector<int> sizes(0, labels.last());
    sizes.fill(0);
    for (int i = 0; i < points.count(); ++i) ++sizes[labels.clusterOf(i)];

    const auto survives = [&](int size) { return size > 0 && size >= minClusterSize; };
    for (int i = 0; i < points.count(); ++i) {
        const int size = sizes[labels.clusterOf(i)];
        if (survives(size)) flags[points.voxel(i)] = size;
    }
    return static_cast<int>(std::count_if(sizes.get() + 1, sizes.get() + labels.last() + 1, survives));
}

} // namespace

int labelClusters(const float* values, const int* const* coordinates, int v, float zThreshold, int minClusterSize,
                  int* flags) {
    std::fill(flags, flags + v, 0);
    const ThresholdPoints points(values, coordinates, v, zThreshold);
    if (points.count() == 0) return 0;

    Labels labels(points.count());
    const OffsetVector<int> neighbours(0, points.count() - 1);
    for (int seed = 0; seed < points.count(); ++seed) {
        if (labels.isFree(seed)) growFrom(seed, points, labels, neighbours.get());
    }
    return flagSurvivors(points, labels, minClusterSize, flags);
}

} // namespace zn
