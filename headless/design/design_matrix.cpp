#include "headless/design/design_matrix.h"

#include "headless/design/predictor_table.h"
#include "headless/design/rtc_text.h"
#include "headless/failure/failure.h"
#include "headless/text/text_lines.h"

namespace zn::headless {

DesignMatrix readDesignMatrix(const std::filesystem::path& file, int volumes) {
    const std::vector<std::string> lines = readLines(file);
    const bool rtc = !lines.empty() && lines.front().starts_with("FileVersion:");
    DesignMatrix design = rtc ? parseRtc(lines, file.string()) : parsePredictorTable(lines, file.string());
    if (design.names.size() > kMaxPredictors) {
        throw Failure(ExitStatus::kInput, file.string() + " has " + std::to_string(design.names.size()) +
                                              " predictors; the plug-in accepts at most " +
                                              std::to_string(kMaxPredictors) + "; keep only the columns that matter.");
    }
    const std::size_t values = design.predictors.front().size();
    if (values != static_cast<std::size_t>(volumes)) {
        throw Failure(ExitStatus::kInput, file.string() + " has " + std::to_string(values) +
                                              " rows of predictor values, but the data have " +
                                              std::to_string(volumes) + " volumes; provide one row per volume.");
    }
    return design;
}

} // namespace zn::headless
