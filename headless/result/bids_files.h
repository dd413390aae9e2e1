#pragma once

#include "headless/result/result_files.h"

#include <string>

namespace zn::headless {

/// Writes what makes the folder of a result a data set of BIDS derivatives: dataset_description.json, naming the
/// program and the plug-in with their versions, and .bidsignore, which keeps validators away from the files without a
/// BIDS name. Throws Failure (kOther).
void writeBidsFiles(const ResultFiles& files, const std::string& version, const std::string& pluginName,
                    const std::string& pluginVersion);

} // namespace zn::headless
