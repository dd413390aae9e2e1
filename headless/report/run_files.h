#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// The files that a run leaves, by the part of their names that does not depend on the input.
class RunFiles {
public:
    /// Throws Failure (kInput) unless the folder holds the result of a run.
    explicit RunFiles(const std::filesystem::path& folder);

    const std::filesystem::path& folder() const { return folder_; }
    /// What the names begin with, as "sub-02_task-oneback_run-1".
    const std::string& stem() const { return stem_; }

    std::filesystem::path operator()(const std::string& ending) const { return folder_ / (stem_ + ending); }
    bool has(const std::string& ending) const;

    /// A whole text file. Throws Failure (kInput) when it cannot be read.
    std::string text(const std::string& ending) const;
    /// The same for a file that may be missing: then empty.
    std::string textIfAny(const std::string& ending) const;

private:
    std::filesystem::path folder_;
    std::string stem_;
};

} // namespace zn::headless
