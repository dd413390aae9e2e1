#include "headless/compression/gzip.h"

#include <gtest/gtest.h>

#include <string>

#include <zlib.h>

namespace zn::test {

using namespace headless;

namespace {

std::string unpacked(const std::vector<std::byte>& packed, std::size_t size) {
    std::string text(size, '\0');
    z_stream stream{};
    inflateInit2(&stream, 15 + 16); // accepts only gzip, and verifies the checksum
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(size);
    const int end = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return end == Z_STREAM_END && stream.avail_in == 0 && stream.avail_out == 0 ? text : "damaged";
}

TEST(Gzip, UnpacksToTheSameBytes) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += static_cast<char>(i % 251 * (i % 7));
    EXPECT_EQ(unpacked(gzip(std::as_bytes(std::span(text))), text.size()), text);
}

TEST(Gzip, CompressesRepetition) {
    const std::string zeros(1000000, '\0');
    EXPECT_LT(gzip(std::as_bytes(std::span(zeros))).size(), 2000u);
}

// Compressors exist whose matches depend on where their state happens to lie in memory.
TEST(Gzip, GivesTheSameBytesWhereverTheInputLies) {
    std::string text;
    for (int i = 0; i < 5000; ++i) text += static_cast<char>(i % 53 * (i / 991 % 5));
    const auto expected = gzip(std::as_bytes(std::span(text)));
    for (std::size_t shift = 0; shift < 1000; ++shift) {
        const std::string around = std::string(shift, '\x55') + text + std::string(shift, '\xaa');
        ASSERT_EQ(gzip(std::as_bytes(std::span(around)).subspan(shift, text.size())), expected) << shift;
    }
}

} // namespace
} // namespace zn::test
