#pragma once

#include <filesystem>

namespace zn::headless {

// Subfolders of a hidden folder while the entries of a folder that keeps its inode are exchanged; see ResultFolder.
inline constexpr char kReplacing[] = ".replacing"; ///< the earlier entries are being moved here
inline constexpr char kReplaced[] = ".replaced";   ///< all of them are here; the new ones are being moved out

/// Creates a new hidden folder in `place`, named after the wanted one, and returns its path. Throws Failure (kOther).
std::filesystem::path makeHiddenFolder(const std::filesystem::path& place, const std::filesystem::path& wanted);

/// Renames a hidden folder to "WANTED.KIND", or "WANTED.KIND-2" and so on, beside it, where the user finds it and no
/// later run removes it. Returns the new path, or the old one if that fails or if it still holds earlier entries of the
/// wanted folder, which the next run puts back.
std::filesystem::path keepHiddenFolder(const std::filesystem::path& hidden, const std::filesystem::path& wanted,
                                       const char* kind);

/// Removes what ended processes of this machine left unfinished in a folder. If one was killed while it exchanged the
/// folder's own entries, the exchange is first undone or, once all earlier entries had been moved away, completed:
/// then either the earlier result is there or the new one. Throws Failure (kOther) when entries cannot be moved; what
/// cannot be removed stays.
void removeLeftovers(const std::filesystem::path& folder);

} // namespace zn::headless
