#pragma once

#include "headless/failure/failure.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace zn::headless {

/// The names in a folder in alphabetical order, without hidden ones; none when there is no such folder. Throws Failure
/// (kInput) when it cannot be read.
inline std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::string name = entry->path().filename().string();
        if (!name.starts_with('.')) names.push_back(std::move(name));
    }
    if (error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory) {
        throw Failure(ExitStatus::kInput, folder.string() + " cannot be read: " + error.message() +
                                              "; make it readable, or choose others with --participant-label.");
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace zn::headless
