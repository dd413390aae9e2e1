#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zn::headless {

/// The plug-in compares time courses with the first 16 predictors and silently ignores the rest.
constexpr std::size_t kMaxPredictors = 16;

/// Predictors that time courses are compared with.
struct DesignMatrix {
    std::vector<std::string> names;             ///< one per predictor
    std::vector<std::vector<float>> predictors; ///< [predictor][volume]
};

} // namespace zn::headless
