#include "headless/compression/deflating_file.h"

#include "headless/compression/gzip.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace zn::headless {

namespace {

constexpr std::size_t kMember = 1 << 24; // bytes before compression: most images are a single member

} // namespace

struct DeflatingFile::State {
    std::FILE* file = nullptr;
    bool compressed = false;
    bool good = false;
    bool anyMember = false;
    std::vector<std::byte> waiting; // for the member to become full

    ~State() {
        if (file) std::fclose(file);
    }

    void store(std::span<const std::byte> bytes) {
        good = good && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    }

    void storeMember() {
        store(gzip(waiting));
        waiting.clear();
        anyMember = true;
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
    if (!s.compressed) s.store(bytes);
    while (s.compressed && s.good && !bytes.empty()) {
        const auto some = bytes.first(std::min(bytes.size(), kMember - s.waiting.size()));
        s.waiting.insert(s.waiting.end(), some.begin(), some.end());
        if (s.waiting.size() == kMember) s.storeMember();
        bytes = bytes.subspan(some.size());
    }
    return s.good;
}

bool DeflatingFile::close() {
    State& s = *state_;
    if (s.good && s.compressed && (!s.waiting.empty() || !s.anyMember)) s.storeMember();
    if (s.file && std::fclose(s.file) != 0) s.good = false;
    s.file = nullptr;
    return s.good;
}

} // namespace zn::headless
