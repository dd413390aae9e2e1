#pragma once

#include <filesystem>
#include <vector>

namespace zn::headless {

/// Two components, a < b, and how their courses go together in the runs.
struct CoursePair {
    int a;
    int b;
    double meanR; ///< the mean of Fisher's z over the runs, as a correlation
    double sdOfZ; ///< standard deviation of Fisher's z over the runs (divisor n - 1)
};

/// All pairs of components in the order (0, 1), (0, 2), ..., from the tables of courses of the runs: a header line with
/// names, a row per volume. Throws Failure (kInput) when a table is damaged.
std::vector<CoursePair> courseCorrelations(const std::vector<std::filesystem::path>& tables);

} // namespace zn::headless
