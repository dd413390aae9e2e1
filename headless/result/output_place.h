#pragma once

#include <filesystem>

namespace zn::headless {

/// Where an output folder is to be: absolute, links resolved, without "." and "..", without a slash at its end. Throws
/// Failure: kUsage for an empty path, kOther when the current folder is gone.
std::filesystem::path outputPlace(const std::filesystem::path& wanted);

/// Whether another folder beside an existing one can take its name. Not that of a mount point, such as a folder that a
/// container is given; not where the folder above cannot be written to; and not the current folder's, whose shell would
/// be left in the folder that went.
bool canBeReplaced(const std::filesystem::path& folder);

} // namespace zn::headless
