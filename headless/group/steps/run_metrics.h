#pragma once

#include "headless/group/dual_regression.h"
#include "headless/group/steps/group_maps.h"

#include <filesystem>

namespace zn::headless {

/// Writes what a run's own maps and courses say about each component, and the description of the columns. Throws
/// Failure (kOther).
///
///   component  amplitude  group_similarity  map_skewness  map_kurtosis  lag1_autocorr
void writeRunMetrics(const std::filesystem::path& table, const std::filesystem::path& description,
                     const DualRegression& regression, const GroupMaps& maps, int volumes);

} // namespace zn::headless
