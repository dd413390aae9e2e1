#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The folders "sub-LABEL/func" and "sub-LABEL/ses-LABEL/func" of a dataset, relative to it and in alphabetical order;
/// nothing else of the dataset is looked at.
///
///   participants   labels with or without "sub-"; empty: all
///   sessions       labels with or without "ses-"; empty: all, and subjects without sessions
///
/// Throws Failure (kInput) for a dataset without subjects, a label that does not exist, and a folder that cannot be
/// read.
std::vector<std::filesystem::path> functionalFolders(const std::filesystem::path& dataset,
                                                     const std::vector<std::string>& participants,
                                                     const std::vector<std::string>& sessions);

} // namespace zn::headless
