#pragma once

#include "headless/design/design_matrix.h"

#include <string>
#include <string_view>
#include <vector>

namespace zn::headless {

/// Whether an entire text is a number.
bool isNumber(std::string_view text);

/// Whether the first line that is neither empty nor a comment holds nothing but numbers.
bool areNumberColumns(const std::vector<std::string>& lines);

/// Parses columns of numbers without a header, in AFNI's .1D format: one row per volume, numbers separated by blanks,
/// tabs or commas, "3@0" for three zeros; comments from '#' or "//" to the end of the line, empty lines ignored. A
/// comment 'ColumnLabels = "a ; b"', as in matrices of 3dDeconvolve, gives the names; otherwise they are the file's
/// name with the number of the column from 0:
///
///       # two predictors
///       0   1                   named "task[0]" and "task[1]" in the file task.1D; a single column is named "task"
///       0.5 1
///
/// Throws Failure (kInput); its text names `file`.
DesignMatrix parseNumberColumns(const std::vector<std::string>& lines, const std::string& file);

} // namespace zn::headless
