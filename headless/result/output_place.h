#pragma once

#include <filesystem>

namespace zn::headless {

/// The path of an output folder: absolute, links resolved, without "." and "..", without a trailing slash. Throws
/// Failure: kUsage for an empty path, kOther when the current folder no longer exists.
std::filesystem::path outputPlace(const std::filesystem::path& wanted);

/// Whether another folder can take the name of an existing one. It cannot for a mount point, such as a folder mounted
/// into a container, nor where the parent folder is not writable, nor for the current folder, whose shell would be left
/// in the folder that was replaced.
bool canBeReplaced(const std::filesystem::path& folder);

} // namespace zn::headless
