#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// One sentence for the user about what processes of other machines or containers have left unfinished in a folder and
/// not changed for a day; empty when nothing is. It is never removed: no limit on age is safe, because a process may be
/// suspended, and locks do not reach other machines on every file system.
///
///   wanted   only what would have got this name; empty: everything
std::string noteOnOldForeignWork(const std::filesystem::path& folder, const std::string& wanted = "");

/// The same about what would have become the result `out`.
std::string noteOnOldForeignWorkFor(const std::filesystem::path& out);

} // namespace zn::headless
