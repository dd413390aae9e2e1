#pragma once

#include <cstddef>
#include <vector>

namespace zn::headless {

/// How well the other runs of the same analysis reproduce a component.
struct Stability {
    double index = 0.0; ///< Iq of its cluster, at most 1; NaN when it is alone in the cluster
    int runs = 0;       ///< runs with a component in the cluster, including its own
};

/// Similar components of several runs.
struct ComponentCluster {
    std::vector<std::size_t> members; ///< components, at least one
    Stability stability;
    std::size_t centrotype = 0; ///< the member with the largest total similarity to the others
};

/// Clusters the components of several runs; the most stable cluster first, those with a single component last.
///
///   similarity   [i][j], absolute spatial correlations of all n components with each other, row after row
///   run          [i], the run of component i; its length is n
///   clusters     number of clusters that the tree is cut into; at most n are used
///
/// Himberg, Hyvarinen and Esposito (2004), NeuroImage 22, 1214-1222: agglomeration by average linkage over 1 -
/// similarity; Iq is the mean similarity within the cluster, including each component with itself, minus the mean
/// similarity between the cluster and all other components. O(n^2) memory, about O(n^2) time.
std::vector<ComponentCluster> clustersOf(const std::vector<double>& similarity, const std::vector<int>& run,
                                         int clusters);

/// The stability of each component's cluster, [component].
///
///   count   number of components
std::vector<Stability> stabilityOf(const std::vector<ComponentCluster>& clusters, std::size_t count);

} // namespace zn::headless
