#pragma once

#include "headless/result/result_files.h"

#include <string>

namespace zn::headless {

/// Writes the files that make a result folder a BIDS derivatives dataset: dataset_description.json, with the names and
/// versions of the program and the plug-in, and .bidsignore, which keeps validators away from the files without a BIDS
/// name. Throws Failure (kOther).
void writeBidsFiles(const ResultFiles& files, const std::string& version, const std::string& pluginName,
                    const std::string& pluginVersion);

} // namespace zn::headless
