#include "headless/compression/inflating_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>

#include <isa-l/igzip_lib.h>

namespace zn::headless {

namespace {

constexpr std::size_t kInput = 1 << 18;

} // namespace

struct InflatingFile::State {
    struct CloseFile {
        void operator()(std::FILE* opened) const { std::fclose(opened); }
    };

    std::unique_ptr<std::FILE, CloseFile> file;
    std::array<std::uint8_t, kInput> input{};
    inflate_state stream{};
    bool compressed = false;
    bool damaged = false;
    bool truncated = false;
    bool ended = false; // no member begins after the last one

    // False at the end of the file.
    bool refill() {
        if (stream.avail_in > 0) return true;
        stream.next_in = input.data();
        stream.avail_in = static_cast<std::uint32_t>(std::fread(input.data(), 1, input.size(), file.get()));
        return stream.avail_in > 0;
    }

    void beginMember() {
        isal_inflate_reset(&stream);
        stream.crc_flag = ISAL_GZIP;
    }

    // The two bytes with which a member begins may lie on both sides of a refill.
    void passToNextMember() {
        ended = !refill() || stream.next_in[0] != 0x1f;
        if (!ended) beginMember();
    }

    std::size_t inflate(std::byte* target, std::size_t count) {
        stream.next_out = reinterpret_cast<std::uint8_t*>(target);
        stream.avail_out = static_cast<std::uint32_t>(count);
        while (stream.avail_out > 0 && !ended && !damaged && !truncated) {
            const bool more = refill();
            const std::uint32_t before = stream.avail_out;
            damaged = isal_inflate(&stream) < 0;
            if (stream.block_state == ISAL_BLOCK_FINISH) {
                passToNextMember();
            } else {
                truncated = !damaged && !more && stream.avail_out == before;
            }
        }
        return count - stream.avail_out;
    }
};

InflatingFile::InflatingFile(const std::filesystem::path& file) : state_(std::make_unique<State>()) {
    State& s = *state_;
    s.file.reset(std::fopen(file.c_str(), "rb"));
    if (!s.file) return;
    isal_inflate_init(&s.stream);
    s.compressed = s.refill() && s.stream.avail_in > 1 && s.stream.next_in[0] == 0x1f && s.stream.next_in[1] == 0x8b;
    if (s.compressed) s.stream.crc_flag = ISAL_GZIP;
}

InflatingFile::~InflatingFile() = default;

bool InflatingFile::isOpen() const {
    return state_->file != nullptr;
}

std::size_t InflatingFile::read(std::byte* target, std::size_t count) {
    State& s = *state_;
    if (!s.file) return 0;
    constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max(); // of one call
    std::size_t done = 0;
    if (s.compressed) {
        while (done < count) {
            const std::size_t wanted = std::min(count - done, kMost);
            const std::size_t got = s.inflate(target + done, wanted);
            done += got;
            if (got < wanted) break;
        }
        return done;
    }
    done = std::min<std::size_t>(count, s.stream.avail_in); // read to recognise the format
    std::copy_n(reinterpret_cast<const std::byte*>(s.stream.next_in), done, target);
    s.stream.next_in += done;
    s.stream.avail_in -= static_cast<std::uint32_t>(done);
    return done + std::fread(target + done, 1, count - done, s.file.get());
}

bool InflatingFile::skip(std::int64_t count) {
    std::array<std::byte, 4096> passed;
    while (count > 0) {
        const auto some = static_cast<std::size_t>(std::min<std::int64_t>(count, passed.size()));
        if (read(passed.data(), some) != some) return false;
        count -= static_cast<std::int64_t>(some);
    }
    return true;
}

void InflatingFile::finish() {
    if (state_->compressed) skip(std::numeric_limits<std::int64_t>::max());
}

bool InflatingFile::isDamaged() const {
    return state_->damaged;
}

bool InflatingFile::isTruncated() const {
    return state_->truncated;
}

} // namespace zn::headless
