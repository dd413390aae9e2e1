#pragma once

#include <filesystem>
#include <string>

namespace zn::test {

/// A new empty folder that is the current directory while this object lives and is removed afterwards.
class ScratchDirectory {
public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path before_;
    std::filesystem::path path_;
};

/// All bytes of a file; the test fails when it cannot be read.
std::string contentOf(const std::filesystem::path& file);

/// A text file with '\n' for every line end; the test fails when one of them is not the platform's (CR LF on Windows,
/// LF elsewhere).
std::string platformTextOf(const std::filesystem::path& file);

} // namespace zn::test
