#include "headless/compression/deflating_file.h"

#include "headless/compression/level_one.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zn::headless {

namespace {

constexpr std::size_t kOutput = 1 << 18;
constexpr std::size_t kMostAtOnce = 1 << 30; // the library counts in 32 bits

} // namespace

struct DeflatingFile::State {
    std::FILE* file = nullptr;
    bool compressed = false;
    bool good = false;
    LevelOne level;
    std::array<std::byte, kOutput> output;

    ~State() {
        if (file) std::fclose(file);
    }

    void store(const std::byte* bytes, std::size_t count) {
        good = good && std::fwrite(bytes, 1, count, file) == count;
    }

    // Compresses what was supplied and stores it.
    void deflate() {
        isal_zstream& stream = level.stream;
        do {
            stream.next_out = reinterpret_cast<std::uint8_t*>(output.data());
            stream.avail_out = static_cast<std::uint32_t>(output.size());
            good = good && isal_deflate(&stream) == COMP_OK;
            store(output.data(), output.size() - stream.avail_out);
        } while (good && stream.avail_out == 0);
    }
};

DeflatingFile::DeflatingFile(const std::filesystem::path& file, bool compressed) : state_(std::make_unique<State>()) {
    state_->file = std::fopen(file.c_str(), "wbe");
    state_->good = state_->file != nullptr;
    state_->compressed = compressed;
}

DeflatingFile::~DeflatingFile() = default;

bool DeflatingFile::write(std::span<const std::byte> bytes) {
    State& s = *state_;
    while (s.good && !bytes.empty()) {
        const auto some = bytes.first(std::min(bytes.size(), kMostAtOnce));
        if (s.compressed) {
            s.level.supply(some.data(), some.size());
            s.deflate();
        } else {
            s.store(some.data(), some.size());
        }
        bytes = bytes.subspan(some.size());
    }
    return s.good;
}

bool DeflatingFile::close() {
    State& s = *state_;
    if (s.good && s.compressed) {
        s.level.supply(nullptr, 0);
        s.level.stream.end_of_stream = 1;
        s.deflate();
    }
    if (s.file && std::fclose(s.file) != 0) s.good = false;
    s.file = nullptr;
    return s.good;
}

} // namespace zn::headless
