#pragma once

#include <cstddef>
#include <filesystem>
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

/// Reads a design matrix and checks it against the data. A file whose first line begins with "FileVersion:" is parsed
/// as RTC text (rtc_text.h), any other as a table (predictor_table.h).
///
///   volumes   number of values that every predictor must have
///
/// Throws Failure (kInput) naming file, line and column; also for more than kMaxPredictors predictors.
DesignMatrix readDesignMatrix(const std::filesystem::path& file, int volumes);

} // namespace zn::headless
