#pragma once

#include "headless/bids/bids_folder.h"

#include <filesystem>
#include <map>
#include <vector>

namespace zn::headless {

/// The JSON files that apply to an image, nearest first: by the inheritance principle of BIDS (1.8, "The Inheritance
/// Principle"), those of the same suffix whose entities are all among the image's, in the image's folder and in the
/// folders above up to the one that holds "sub-LABEL/". Within a folder the one with the most entities comes first.
///
///   ds/task-rest_bold.json, ds/sub-01/sub-01_bold.json      apply to ds/sub-01/func/sub-01_task-rest_bold.nii.gz
///
/// None for an image whose name does not begin with "sub-LABEL_".
std::vector<std::filesystem::path> sidecarsOf(const std::filesystem::path& image);

/// The same for many images: every folder is listed once, when the first image below it is asked for.
class SidecarFolders {
public:
    std::vector<std::filesystem::path> sidecarsOf(const std::filesystem::path& image);

private:
    const std::vector<NamedFile>& filesIn(const std::filesystem::path& folder);

    std::map<std::filesystem::path, std::vector<NamedFile>> files_; // the JSON files, most entities first
};

} // namespace zn::headless
