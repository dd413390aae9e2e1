#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>

namespace zn::headless {

/// Reads a file from its beginning, inflated if it is compressed with gzip (recognised by its first two bytes),
/// otherwise as it is. Several gzip members in a row count as one file; anything else after a member is ignored.
class InflatingFile {
public:
    /// A file that cannot be opened reads as empty; see isOpen().
    explicit InflatingFile(const std::filesystem::path& file);
    ~InflatingFile();
    InflatingFile(const InflatingFile&) = delete;
    InflatingFile& operator=(const InflatingFile&) = delete;

    bool isOpen() const;

    /// Up to `count` bytes; fewer at the end, or where the file is damaged.
    std::size_t read(std::byte* target, std::size_t count);

    /// Skips bytes; false if there are fewer.
    bool skip(std::int64_t count);

    /// Reads a compressed file to its end, so that isDamaged() and isTruncated() are about the whole of it.
    void finish();

    /// Whether what has been read so far is not what was compressed: invalid data or a wrong checksum, which is
    /// compared at the end of each member.
    bool isDamaged() const;

    /// Whether reading has met the end of the file inside a gzip member.
    bool isTruncated() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace zn::headless
