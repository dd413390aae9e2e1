#include "headless/compression/gzip.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

namespace zn::test {

using namespace headless;

namespace {

std::string unpacked(const GzipMember& member, std::size_t size) {
    const std::span<const std::byte> packed = member.bytes();
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

// Bytes that cannot be compressed.
std::string noise(std::size_t size) {
    std::string text(size, '\0');
    std::uint32_t state = 1;
    for (char& byte : text) byte = static_cast<char>((state = state * 1664525U + 1013904223U) >> 24);
    return text;
}

TEST(Gzip, UnpacksToTheSameBytes) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += static_cast<char>(i % 251 * (i % 7));
    EXPECT_EQ(unpacked(gzip(std::as_bytes(std::span(text))), text.size()), text);
}

TEST(Gzip, CompressesRepetition) {
    const std::string zeros(1000000, '\0');
    EXPECT_LT(gzip(std::as_bytes(std::span(zeros))).size, 2000u);
}

// Compressors exist whose matches depend on where their state happens to lie in memory.
TEST(Gzip, GivesTheSameBytesWhereverTheInputLies) {
    std::string text;
    for (int i = 0; i < 5000; ++i) text += static_cast<char>(i % 53 * (i / 991 % 5));
    const auto packed = [](std::span<const std::byte> bytes) {
        const GzipMember member = gzip(bytes);
        return std::vector(member.bytes().begin(), member.bytes().end());
    };
    const auto expected = packed(std::as_bytes(std::span(text)));
    for (std::size_t shift = 0; shift < 1000; ++shift) {
        const std::string around = std::string(shift, '\x55') + text + std::string(shift, '\xaa');
        ASSERT_EQ(packed(std::as_bytes(std::span(around)).subspan(shift, text.size())), expected) << shift;
    }
}

// In a process of its own, whose peak is that of nothing else.
TEST(Gzip, NeedsMemoryForWhatItReturnsOnly) {
    const auto peakMib = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return static_cast<int>(usage.ru_maxrss / 1024);
    };
    const std::string text = noise(1 << 24);
    const pid_t process = fork();
    if (process == 0) {
        const int before = peakMib();
        const GzipMember member = gzip(std::as_bytes(std::span(text)));
        _exit(member.size < text.size() ? 255 : peakMib() - before);
    }
    int status = 0;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_GE(WEXITSTATUS(status), 15); // it has been measured
    EXPECT_LE(WEXITSTATUS(status), 24);
}

} // namespace
} // namespace zn::test
