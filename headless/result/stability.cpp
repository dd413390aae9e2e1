#include "headless/result/stability.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>

namespace zn::headless {

namespace {

// Clustering by average linkage. A cluster is identified by one of its components, a merged one by that of the first.
class AverageLinkage {
public:
    explicit AverageLinkage(const std::vector<double>& similarity, std::size_t count)
        : count_(count), mean_(similarity), members_(count), nearest_(count) {
        for (std::size_t i = 0; i < count; ++i) members_[i] = {i};
        for (std::size_t i = 0; i < count; ++i) nearest_[i] = findNearest(i);
    }

    void mergeUntil(std::size_t clusters) {
        for (std::size_t left = count_; left > clusters; --left) mergeMostSimilar();
    }

    /// [cluster]: its components; clusters merged into another are empty.
    const std::vector<std::vector<std::size_t>>& clusters() const { return members_; }

private:
    bool alive(std::size_t i) const { return !members_[i].empty(); }
    double& mean(std::size_t i, std::size_t j) { return mean_[i * count_ + j]; }

    std::size_t findNearest(std::size_t i) {
        std::size_t best = count_; // none
        for (std::size_t j = 0; j < count_; ++j) {
            if (j != i && alive(j) && (best == count_ || mean(i, j) > mean(i, best))) best = j;
        }
        return best;
    }

    void mergeMostSimilar() {
        std::size_t a = count_;
        for (std::size_t i = 0; i < count_; ++i) {
            if (alive(i) && (a == count_ || mean(i, nearest_[i]) > mean(a, nearest_[a]))) a = i;
        }
        const std::size_t b = nearest_[a];
        const auto sizeA = static_cast<double>(members_[a].size());
        const auto sizeB = static_cast<double>(members_[b].size());
        for (std::size_t j = 0; j < count_; ++j) {
            if (j == a || j == b || !alive(j)) continue;
            mean(a, j) = mean(j, a) = (sizeA * mean(a, j) + sizeB * mean(b, j)) / (sizeA + sizeB);
        }
        members_[a].insert(members_[a].end(), members_[b].begin(), members_[b].end());
        members_[b].clear();
        for (std::size_t j = 0; j < count_; ++j) {
            if (!alive(j)) continue;
            // An average never exceeds the nearer of the two merged: others keep their nearest.
            if (j == a || nearest_[j] == a || nearest_[j] == b) nearest_[j] = findNearest(j);
        }
    }

    std::size_t count_;
    std::vector<double> mean_; // between clusters
    std::vector<std::vector<std::size_t>> members_;
    std::vector<std::size_t> nearest_;
};

// Totals of one component's similarities, itself included.
struct Totals {
    double within = 0.0; // its cluster
    double between = 0.0;
};

Totals totalsOf(const std::vector<double>& similarity, std::size_t count, std::size_t component,
                const std::set<std::size_t>& cluster) {
    Totals totals;
    for (std::size_t j = 0; j < count; ++j) {
        (cluster.contains(j) ? totals.within : totals.between) += similarity[component * count + j];
    }
    return totals;
}

ComponentCluster describe(const std::vector<std::size_t>& members, const std::vector<double>& similarity,
                          const std::vector<int>& run) {
    const std::set<std::size_t> inside(members.begin(), members.end());
    std::set<int> runs;
    Totals all;
    double largest = -1.0;
    ComponentCluster cluster{members, {}, members.front()};
    for (const std::size_t i : members) {
        const Totals own = totalsOf(similarity, run.size(), i, inside);
        if (own.within > largest) {
            largest = own.within;
            cluster.centrotype = i;
        }
        runs.insert(run[i]);
        all.within += own.within;
        all.between += own.between;
    }
    const auto size = static_cast<double>(members.size());
    const double others = static_cast<double>(run.size()) - size;
    const double index = all.within / (size * size) - (others > 0.0 ? all.between / (size * others) : 0.0);
    cluster.stability = {members.size() > 1 ? index : std::nan(""), static_cast<int>(runs.size())};
    return cluster;
}

// Of two clusters, a single component has no index and comes last.
bool isMoreStable(const ComponentCluster& a, const ComponentCluster& b) {
    if (std::isnan(a.stability.index) || std::isnan(b.stability.index)) {
        return !std::isnan(a.stability.index) && std::isnan(b.stability.index);
    }
    return a.stability.index > b.stability.index;
}

} // namespace

std::vector<ComponentCluster> clustersOf(const std::vector<double>& similarity, const std::vector<int>& run,
                                         int clusters) {
    AverageLinkage linkage(similarity, run.size());
    linkage.mergeUntil(static_cast<std::size_t>(clusters));
    std::vector<ComponentCluster> result;
    for (const auto& members : linkage.clusters()) {
        if (!members.empty()) result.push_back(describe(members, similarity, run));
    }
    std::stable_sort(result.begin(), result.end(), isMoreStable);
    return result;
}

std::vector<Stability> stabilityOf(const std::vector<ComponentCluster>& clusters, std::size_t count) {
    std::vector<Stability> result(count);
    for (const ComponentCluster& cluster : clusters) {
        for (const std::size_t component : cluster.members) result[component] = cluster.stability;
    }
    return result;
}

} // namespace zn::headless
