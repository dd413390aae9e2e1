#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// A column of a table with what it means.
struct EvidenceColumn {
    std::string name;
    std::string description;
    std::string units; ///< empty: none
    std::vector<std::string> cells;
};

/// Writes columns of equal length as a tab-separated table, and what they mean as a BIDS JSON sidecar. Throws Failure
/// (kOther).
void writeEvidenceTable(const std::filesystem::path& table, const std::filesystem::path& description,
                        const std::vector<EvidenceColumn>& columns);

/// The shortest text of a number in single precision; "n/a" for NaN.
std::string cellOf(double value);

} // namespace zn::headless
