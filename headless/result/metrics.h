#pragma once

#include <array>

namespace zn {

/// One of the sixteen parameters of a component, at its position in the map's parameter array.
struct Metric {
    const char* column;      ///< name in the tables of a result
    const char* pluginName;  ///< name that the plug-in gives the parameter; positions 11 and 12 share theirs
    const char* description; ///< what it says, and how it was rescaled
    const char* units;
};

extern const std::array<Metric, 16> kMetrics;

/// Positions that the tables need by themselves.
constexpr std::size_t kPredictorIndex = 1; ///< 1-based; 1 also when there is no design matrix
constexpr std::size_t kRegionIndex = 4;    ///< 1-based; 0: none

} // namespace zn
