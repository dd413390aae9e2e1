#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zn::test {

/// Everything below a folder: the bytes of each file by its path relative to the folder. The path of a folder ends in a
/// slash and has no bytes.
using Snapshot = std::map<std::string, std::string>;

Snapshot snapshotOf(const std::filesystem::path& folder);

/// Makes the contents of a folder those of the snapshot again. The folder itself stays the same.
void restore(const std::filesystem::path& folder, const Snapshot& snapshot);

/// The entries below the path `place`, which then is relative to `place`; a file has an empty name.
Snapshot below(const Snapshot& snapshot, const std::string& place);

/// Without what differs between two runs with the same seed: times, memory in use, the page's copies of them.
Snapshot withoutTimes(const Snapshot& snapshot);

/// Whether a path lies in a hidden folder, or is a hidden file, that a killed command may leave behind.
bool isLeftover(const std::string& path);

} // namespace zn::test
