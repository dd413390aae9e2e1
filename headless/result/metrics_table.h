#pragma once

#include "headless/host/volume_maps.h"
#include "headless/measures/component_measures.h"
#include "headless/result/stability.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The names behind the numbers of the best predictor, region and confound; empty without a design matrix, regions or
/// confounds.
struct ReferenceNames {
    std::vector<std::string> predictors;
    std::vector<std::string> regions;
    std::vector<std::string> confounds;

    /// Name of the reference with this number, counted from 1; "n/a" for any number that is not in the list.
    static std::string at(const std::vector<std::string>& names, float number);
};

/// What the table says about the components beside their maps' parameters.
struct ComponentFacts {
    ReferenceNames names;
    std::vector<ComponentMeasures> measures; ///< [component]
    std::vector<Stability> stability;        ///< [component] after several runs, otherwise empty
};

/// Writes a tab-separated table with one row per component: its name; the sixteen parameters in the columns of
/// kMetrics; explained variance, skewness and kurtosis; with confounds the largest correlation and its confound; the
/// names of the best predictor and region; an empty classification; after several runs two more columns. NaN is written
/// as "n/a". Throws Failure (kOther).
void writeMetricsTable(const std::filesystem::path& file, const VolumeMaps& maps, const ComponentFacts& facts);

} // namespace zn::headless
