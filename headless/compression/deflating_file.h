#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>

namespace zn::headless {

/// Writes a file, compressed with gzip on request. Every function returns whether all went well so far.
class DeflatingFile {
public:
    /// A large file is compressed in members of 16 MiB (RFC 1952, section 2.2), independently of the threads.
    ///
    ///   threads   members that may be compressed at the same time, each in up to 32 MiB; up to 1: by the caller
    DeflatingFile(const std::filesystem::path& file, bool compressed, int threads = 1);
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
