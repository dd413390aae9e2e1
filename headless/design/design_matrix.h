#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The plug-in compares time courses with the first 16 predictors and passes over any further one in silence.
constexpr std::size_t kMostPredictors = 16;

/// Predictors that time courses are compared with.
struct DesignMatrix {
    std::vector<std::string> names;             ///< one a predictor
    std::vector<std::vector<float>> predictors; ///< [predictor][volume]
};

/// Reads a design matrix and checks it against the data. A file whose first line begins with "FileVersion:" is taken
/// as RTC text (rtc_text.h), any other as a table (predictor_table.h).
///
///   volumes   how many values every predictor must have
///
/// Throws Failure (kInput) naming file, line and column; also for more than kMostPredictors.
DesignMatrix readDesignMatrix(const std::filesystem::path& file, int volumes);

} // namespace zn::headless
