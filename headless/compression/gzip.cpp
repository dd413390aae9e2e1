#include "headless/compression/gzip.h"

#include "headless/compression/level_one.h"

#include <limits>
#include <new>

namespace zn::headless {

std::vector<std::byte> gzip(std::span<const std::byte> bytes) {
    constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max() - (1U << 20); // more than a page could hold
    constexpr std::size_t kWrapper = 64; // header, checksum and the end of the last block
    if (bytes.size() > kMost / 2) throw std::bad_alloc();
    LevelOne level;
    level.supply(bytes.data(), bytes.size());
    level.stream.end_of_stream = 1;
    std::vector<std::byte> packed(bytes.size() + bytes.size() / 8 + kWrapper); // stored blocks are hardly longer
    level.stream.next_out = reinterpret_cast<std::uint8_t*>(packed.data());
    level.stream.avail_out = static_cast<std::uint32_t>(packed.size());
    if (isal_deflate(&level.stream) != COMP_OK || level.stream.avail_in > 0) throw std::bad_alloc();
    packed.resize(level.stream.total_out);
    return packed;
}

} // namespace zn::headless
