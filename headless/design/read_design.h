#pragma once

#include "headless/design/design_matrix.h"
#include "headless/events/analysed_volumes.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// A design matrix as it is compared with the analysed volumes, and where it came from.
struct Design {
    DesignMatrix matrix;
    std::string format;             ///< "BIDS events", "table", "FEAT design matrix", "number columns", "RTC text"
    int omittedRows = 0;            ///< rows of dummy scans
    std::vector<std::string> notes; ///< one sentence each
};

/// Reads predictors from a file in any of these formats, recognised by what the file holds, not by its name:
///
///   BIDS events           a table with the columns onset and duration: one predictor per trial_type, the events
///                         convolved with the canonical response (event_predictor.h)
///   table                 a header with names, then one row per volume; cells separated by tabs or commas
///   FEAT design matrix    design.mat (feat_matrix.h)
///   number columns        numbers without a header, such as AFNI's .1D (number_columns.h)
///   RTC text              first line "FileVersion: ..." (rtc_text.h)
///
/// Except for events, which have times, a file has either one row per analysed volume, or one row per volume of the
/// image, in which case those of the dummy scans are omitted.
///
/// Throws Failure (kInput) naming file, line and column; also for more than kMaxPredictors predictors.
Design readDesign(const std::filesystem::path& file, const AnalysedVolumes& volumes);

} // namespace zn::headless
