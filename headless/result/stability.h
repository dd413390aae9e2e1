#pragma once

#include <vector>

namespace zn::headless {

/// How well the other runs of the same analysis reproduce a component.
struct Stability {
    double index = 0.0; ///< Iq of its cluster, at most 1; NaN when it is alone in the cluster
    int runs = 0;       ///< runs with a component in the cluster, including its own
};

/// Clusters the components of several runs and returns, for each component, the stability of its cluster.
///
///   similarity   [i][j], absolute spatial correlations of all n components with each other, row after row
///   run          [i], the run of component i; its length is n
///   clusters     number of clusters that the tree is cut into; at most n are used
///
/// Himberg, Hyvarinen and Esposito (2004), NeuroImage 22, 1214-1222: agglomeration by average linkage over 1 -
/// similarity; Iq is the mean similarity within the cluster, including each component with itself, minus the mean
/// similarity between the cluster and all other components. O(n^2) memory, about O(n^2) time.
std::vector<Stability> stabilityOf(const std::vector<double>& similarity, const std::vector<int>& run, int clusters);

} // namespace zn::headless
