#pragma once

#include <exception>
#include <filesystem>
#include <vector>

namespace zn::headless {

/// Entries that could not be moved back: some are in either folder. Needs no memory.
class HalfMoved : public std::exception {
public:
    const char* what() const noexcept override {
        return "not all files could be moved, nor moved back; the next run puts them in order.";
    }
};

/// Moves every entry of a folder into another one on the same disk and returns their names. When one entry cannot be
/// moved, because one of that name exists for example, those already moved go back. The subfolder `except`, if any,
/// stays where it is.
///
/// Throws std::filesystem::filesystem_error, or HalfMoved.
std::vector<std::filesystem::path> moveEntries(const std::filesystem::path& from, const std::filesystem::path& to,
                                               const std::filesystem::path& except = {});

/// The same for these entries alone. Needs no descriptor, so that a move can be undone when there are none left.
void moveNamed(const std::vector<std::filesystem::path>& names, const std::filesystem::path& from,
               const std::filesystem::path& to);

} // namespace zn::headless
