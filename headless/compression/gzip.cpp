#include "headless/compression/gzip.h"

#include <new>

#include <libdeflate.h>

namespace zn::headless {

namespace {

constexpr int kFastest = 1; // level; higher ones save less than 1 % of an image

struct FreeCompressor {
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

} // namespace

GzipMember gzip(std::span<const std::byte> bytes) {
    const std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor(libdeflate_alloc_compressor(kFastest));
    if (!compressor) throw std::bad_alloc();
    const std::size_t most = libdeflate_gzip_compress_bound(compressor.get(), bytes.size());
    GzipMember member{std::unique_ptr<std::byte[]>(new std::byte[most])}; // not initialised: little of it may be used
    member.size = libdeflate_gzip_compress(compressor.get(), bytes.data(), bytes.size(), member.buffer.get(), most);
    return member;
}

} // namespace zn::headless
