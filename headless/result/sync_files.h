#pragma once

#include <filesystem>

namespace zn::headless {

/// Waits until a folder and everything in it has reached the disk, so that a power cut cannot leave a renamed folder of
/// empty files. Throws Failure (kOther) naming the file that the disk refused.
void syncTree(const std::filesystem::path& folder);

/// The same for the names in a folder alone, as far as the system allows it: a folder may be writable but not readable,
/// and some network file systems cannot sync one.
void syncFolder(const std::filesystem::path& folder);

} // namespace zn::headless
