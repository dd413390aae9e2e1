#pragma once

#include "headless/result/frequency_bands.h"

#include <array>
#include <string>

namespace zn::headless {

/// One of the sixteen parameters of a component, at its position in the map's parameter array.
struct Metric {
    const char* column;      ///< name in the tables of a result
    const char* pluginName;  ///< name that the plug-in gives the parameter; the same for positions 11 and 12
    const char* description; ///< what it means and how it is rescaled; the same for every band
    const char* units;
};

extern const std::array<Metric, 16> kMetrics;

/// The description of a parameter; for a band, with its limits in this run.
std::string metricDescription(std::size_t position, const FrequencyBands& bands);

/// Positions that the tables refer to individually.
constexpr std::size_t kPredictorIndex = 1; ///< 1-based; 1 also when there is no design matrix
constexpr std::size_t kRegionIndex = 4;    ///< 1-based; 0: none
constexpr std::size_t kFirstBand = 11;

} // namespace zn::headless
