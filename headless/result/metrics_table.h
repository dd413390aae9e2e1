#pragma once

#include "headless/host/volume_maps.h"
#include "headless/result/frequency_bands.h"
#include "headless/result/stability.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The names behind the numbers of the best predictor and the best region; empty without a design matrix or regions.
struct ReferenceNames {
    std::vector<std::string> predictors;
    std::vector<std::string> regions;

    /// Name of the reference with this number, counted from 1; "n/a" for any number that is not in the list.
    static std::string at(const std::vector<std::string>& names, float number);
};

/// Writes the sixteen parameters of every component as a tab-separated table: component, the columns of kMetrics, the
/// names of the best predictor and region, and an empty classification; after several runs (`stability` then has one
/// element per component, otherwise none) two more columns. NaN is written as "n/a". Throws Failure (kOther).
void writeMetricsTable(const std::filesystem::path& file, const VolumeMaps& maps, const ReferenceNames& names,
                       const std::vector<Stability>& stability);

/// Writes what the columns of that table mean, as a BIDS JSON sidecar. Throws Failure (kOther).
///
///   names   names of the predictors and regions, written as levels of the columns
///   bands   for the run's repetition time
void writeMetricsDescription(const std::filesystem::path& file, const ReferenceNames& names,
                             const FrequencyBands& bands, bool withStability);

} // namespace zn::headless
