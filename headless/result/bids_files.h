#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// Writes what makes a folder a data set of BIDS derivatives: dataset_description.json, naming the program and the
/// plug-in with their versions, and .bidsignore, which keeps validators away from the files without a BIDS name.
/// Throws Failure (kOther).
void writeBidsFiles(const std::filesystem::path& folder, const std::string& version, const std::string& pluginName,
                    const std::string& pluginVersion);

} // namespace zn::headless
