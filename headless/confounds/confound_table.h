#pragma once

#include "headless/events/analysed_volumes.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// Time courses of nuisance signals: motion, global signal and the like.
struct Confounds {
    std::vector<std::string> names;         ///< one per confound
    std::vector<std::vector<float>> values; ///< [confound][analysed volume]; NaN: missing
    std::vector<std::string> ignored;       ///< columns that do not vary over the analysed volumes
};

/// Reads confounds from a table with a header (TSV or CSV), such as fMRIPrep's "..._desc-confounds_timeseries.tsv".
/// The cell "n/a" is a missing value. A column that is constant over the analysed volumes, or has fewer than three
/// values there, is ignored.
///
///   columns   those to read; empty: all
///   volumes   the table has one row per analysed volume, or one per volume of the image, in which case the rows of
///             the dummy scans are omitted
///
/// Throws Failure (kInput) for a column that does not exist, a cell that is not a number, another number of rows, for
/// a column that is read twice, and when no column varies.
Confounds readConfounds(const std::filesystem::path& file, const std::vector<std::string>& columns,
                        const AnalysedVolumes& volumes);

/// One column of such a table, whether it varies or not: [analysed volume], NaN for a missing value. Nothing when there
/// is no column of this name. Throws Failure (kInput) as above.
std::optional<std::vector<float>> readConfoundIfAny(const std::filesystem::path& file, const std::string& column,
                                                    const AnalysedVolumes& volumes);

} // namespace zn::headless
