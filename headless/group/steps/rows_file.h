#pragma once

#include "headless/group/group_rows.h"

#include <filesystem>
#include <string>

#include <nlohmann/json.hpp>

namespace zn::headless {

/// Writes the rows of a group: single-precision values in this machine's byte order, row after row, nothing else.
/// Returns what belongs in the step's record: "Rows", "Voxels", "Eigenvalues", "SumOfSquares", "Checksum". Throws
/// Failure (kOther).
nlohmann::ordered_json writeRows(const std::filesystem::path& file, const GroupRows& rows);

/// Reads such rows, at most `most`, with their record. Throws Failure (kInput) when the two do not match.
GroupRows readRows(const std::filesystem::path& file, const nlohmann::ordered_json& record, int most);

} // namespace zn::headless
