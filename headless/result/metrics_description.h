#pragma once

#include "headless/result/frequency_bands.h"
#include "headless/result/metrics_table.h"

#include <filesystem>

namespace zn::headless {

/// Writes what the columns of the metrics table mean, as a BIDS JSON sidecar, with the names of predictors and regions
/// as levels of their columns. Throws Failure (kOther).
///
///   bands   for the run's repetition time
void writeMetricsDescription(const std::filesystem::path& file, const ComponentFacts& facts,
                             const FrequencyBands& bands);

} // namespace zn::headless
