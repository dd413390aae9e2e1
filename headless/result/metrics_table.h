#pragma once

#include "headless/host/volume_maps.h"
#include "headless/result/frequency_bands.h"
#include "headless/result/stability.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// What the numbers of the best predictor and the best region stand for; empty without design matrix or regions.
struct ReferenceNames {
    std::vector<std::string> predictors;
    std::vector<std::string> regions;

    /// Name of the reference with a number counted from 1; "n/a" for none and for a number beyond the list.
    static std::string at(const std::vector<std::string>& names, float number);
};

/// Writes the sixteen parameters of every component as a tab-separated table: component, the columns of kMetrics, the
/// names of the best predictor and region, and an empty classification; after several runs (`stability` has an element
/// a component, else it is empty) two columns more. Not-a-number is "n/a". Throws Failure (kOther).
void writeMetricsTable(const std::filesystem::path& file, const VolumeMaps& maps, const ReferenceNames& names,
                       const std::vector<Stability>& stability);

/// Writes what the columns of that table mean, as JSON in the manner of BIDS. Throws Failure (kOther).
///
///   names   what the numbers of predictors and regions stand for: their levels
///   bands   of the run's repetition time
void writeMetricsDescription(const std::filesystem::path& file, const ReferenceNames& names,
                             const FrequencyBands& bands, bool withStability);

} // namespace zn::headless
