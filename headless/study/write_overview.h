#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// `znica bids ... group`: writes runs.tsv, runs.json and the page index.html from the records in a study's folder
/// alone, and returns a sentence about them. Throws Failure: kInput when there are no records, kOther when a file
/// cannot be written.
std::string writeOverview(const std::filesystem::path& folder);

/// Writes the overview again if there is one; a problem is only printed.
void refreshOverview(const std::filesystem::path& folder);

} // namespace zn::headless
