#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The name of a file or folder in the making: ".NAME.unfinished-MACHINE-PROCESS-NUMBER", at most 143 bytes, which
/// every file system allows. NAME is shortened; MACHINE stands for the host and its table of processes, so that a
/// process of another machine that shares the disk, or of a container, is not taken for one of ours.
std::string unfinishedName(const std::string& wanted, int number);

/// Whether a name has that form, whichever process gave it.
bool isUnfinishedName(const std::string& name);

/// The entries of a folder with such a name from a process of this machine that has ended, so that nobody will finish
/// the work. None for a folder that cannot be read.
std::vector<std::filesystem::path> leftoversIn(const std::filesystem::path& folder);

/// The entries of a folder with such a name from other machines or containers: nobody here knows whether those
/// processes still run. In alphabetical order.
std::vector<std::filesystem::path> foreignWorkIn(const std::filesystem::path& folder);

} // namespace zn::headless
