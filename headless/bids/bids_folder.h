#pragma once

#include "headless/bids/bids_name.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace zn::headless {

/// A file with a BIDS name.
struct NamedFile {
    std::filesystem::path file;
    BidsName name;
};

/// The files of one folder that have BIDS names, read once. A folder that does not exist is empty.
class BidsFolder {
public:
    /// Throws Failure (kInput) when the folder cannot be read.
    explicit BidsFolder(const std::filesystem::path& folder);

    /// In alphabetical order.
    const std::vector<NamedFile>& files() const { return files_; }
    /// The names that look like functional images but are not BIDS names, in alphabetical order.
    const std::vector<std::string>& misnamed() const { return misnamed_; }

    /// The file with exactly these entities, in any order, this suffix and this extension; empty when there is none.
    std::filesystem::path find(const BidsName& wanted) const;

private:
    std::vector<NamedFile> files_;
    std::vector<std::string> misnamed_;
    std::map<std::string, std::size_t> positions_; // by entities in alphabetical order
};

} // namespace zn::headless
