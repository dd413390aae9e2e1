#include "headless/bids/bids_folder.h"

#include "headless/bids/read_folder.h"

#include <algorithm>

namespace zn::headless {

namespace {

std::string keyOf(BidsName name) {
    std::sort(name.entities.begin(), name.entities.end());
    return name.entityText() + "_" + name.suffix + name.extension;
}

} // namespace

BidsFolder::BidsFolder(const std::filesystem::path& folder) {
    for (const std::string& name : namesIn(folder)) {
        if (auto parsed = parseBidsName(name)) {
            positions_.emplace(keyOf(*parsed), files_.size());
            files_.push_back({folder / name, std::move(*parsed)});
        } else if (name.ends_with("bold.nii.gz") || name.ends_with("bold.nii")) {
            misnamed_.push_back(name);
        }
    }
}

std::filesystem::path BidsFolder::find(const BidsName& wanted) const {
    const auto found = positions_.find(keyOf(wanted));
    return found == positions_.end() ? std::filesystem::path() : files_[found->second].file;
}

} // namespace zn::headless
