#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>

namespace zn::headless {

/// Writes a file, compressed with gzip on request. Every function returns whether all went well so far.
class DeflatingFile {
public:
    DeflatingFile(const std::filesystem::path& file, bool compressed);
    ~DeflatingFile();
    DeflatingFile(const DeflatingFile&) = delete;
    DeflatingFile& operator=(const DeflatingFile&) = delete;

    bool write(std::span<const std::byte> bytes);
    /// Completes the file; nothing can be written afterwards.
    bool close();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace zn::headless
