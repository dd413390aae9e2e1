#pragma once

#include <vector>

namespace zn::headless {

/// How well a component came back in the other runs of the same analysis.
struct Stability {
    double index = 0.0; ///< Iq of its cluster, at most 1; not-a-number when the cluster holds nothing but itself
    int runs = 0;       ///< runs with a component in the cluster, its own included
};

/// Clusters the components of several runs and gives each the stability of its cluster.
///
///   similarity   [i][j], absolute spatial correlations of all n components with each other, row after row
///   run          [i], the run of component i; its length is n
///   clusters     how many clusters the tree is cut into; more than n count as n
///
/// Himberg, Hyvarinen and Esposito (2004), NeuroImage 22, 1214-1222: agglomeration by average linkage over 1 -
/// similarity; Iq is the mean similarity within the cluster, each component with itself included, less the mean
/// similarity between the cluster and all other components. O(n^2) memory, about O(n^2) time.
std::vector<Stability> stabilityOf(const std::vector<double>& similarity, const std::vector<int>& run, int clusters);

} // namespace zn::headless
