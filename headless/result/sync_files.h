#pragma once

#include <filesystem>

namespace zn::headless {

/// Waits until a folder and everything in it has reached the disk, so that a power cut cannot leave a renamed folder of
/// empty files. Throws Failure (kOther) naming the file that the disk refused.
void syncTree(const std::filesystem::path& folder);

/// The same for the entries of a folder alone: which names it has.
void syncFolder(const std::filesystem::path& folder);

} // namespace zn::headless
