#include "headless/compression/deflating_file.h"

#include "headless/compression/gzip.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <future>
#include <utility>
#include <vector>

namespace zn::headless {

namespace {

constexpr std::size_t kMember = 1 << 24; // bytes before compression: most images are a single member

using Bytes = std::vector<std::byte>;

} // namespace

struct DeflatingFile::State {
    std::FILE* file = nullptr;
    bool compressed = false;
    std::size_t threads = 1;
    bool good = false;
    bool anyMember = false;
    Bytes waiting;                                // for the member to become full
    std::deque<std::future<GzipMember>> underway; // the members before, in their order

    ~State() {
        if (file) std::fclose(file);
    }

    void store(std::span<const std::byte> bytes) {
        good = good && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    }

    void endMember() {
        anyMember = true;
        if (threads == 1) {
            store(gzip(waiting).bytes());
            waiting.clear();
            return;
        }
        underway.push_back(std::async([bytes = std::exchange(waiting, {})] { return gzip(bytes); }));
        if (underway.size() == threads) storeOldest();
    }

    void storeOldest() {
        store(underway.front().get().bytes());
        underway.pop_front();
    }
};

DeflatingFile::DeflatingFile(const std::filesystem::path& file, bool compressed, int threads)
    : state_(std::make_unique<State>()) {
    state_->file = std::fopen(file.c_str(), "wbe");
    state_->good = state_->file != nullptr;
    state_->compressed = compressed;
    state_->threads = static_cast<std::size_t>(std::max(threads, 1));
}

DeflatingFile::~DeflatingFile() = default;

bool DeflatingFile::write(std::span<const std::byte> bytes) {
    State& s = *state_;
    if (!s.compressed) s.store(bytes);
    while (s.compressed && s.good && !bytes.empty()) {
        s.waiting.reserve(kMember); // only what is filled takes up memory
        const auto some = bytes.first(std::min(bytes.size(), kMember - s.waiting.size()));
        s.waiting.insert(s.waiting.end(), some.begin(), some.end());
        if (s.waiting.size() == kMember) s.endMember();
        bytes = bytes.subspan(some.size());
    }
    return s.good;
}

bool DeflatingFile::close() {
    State& s = *state_;
    if (s.good && s.compressed && (!s.waiting.empty() || !s.anyMember)) s.endMember();
    while (!s.underway.empty()) s.storeOldest();
    if (s.file && std::fclose(s.file) != 0) s.good = false;
    s.file = nullptr;
    return s.good;
}

} // namespace zn::headless
