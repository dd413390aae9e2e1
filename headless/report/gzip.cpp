#include "headless/report/gzip.h"

#include <limits>
#include <new>

#include <zlib.h>

namespace zn::headless {

namespace {

constexpr int kLevel = 4;            // 6 takes twice as long and saves half a percent per map
constexpr int kGzipWindow = 15 + 16; // the largest window; 16 more asks for the gzip header and checksum

} // namespace

std::vector<std::byte> gzip(std::span<const std::byte> bytes) {
    if (bytes.size() > std::numeric_limits<uInt>::max()) throw std::bad_alloc(); // 4 GiB: more than a page could hold
    z_stream stream{};
    if (deflateInit2(&stream, kLevel, Z_DEFLATED, kGzipWindow, 9, Z_DEFAULT_STRATEGY) != Z_OK) throw std::bad_alloc();
    std::vector<std::byte> packed(deflateBound(&stream, static_cast<uLong>(bytes.size())));
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(bytes.data())); // zlib does not modify it
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH); // the bound is large enough for one call
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

} // namespace zn::headless
