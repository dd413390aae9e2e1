// Files as gzip and other tools write them, compressed here with zlib.
#include "headless/compression/deflating_file.h"
#include "headless/compression/inflating_file.h"

#include "files.h"

#include <string>

#include <gtest/gtest.h>
#include <zlib.h>

namespace zn::test {

using namespace headless;

namespace {

std::string member(const std::string& text) {
    std::string packed(text.size() + 1000, '\0');
    z_stream stream{};
    deflateInit2(&stream, 6, Z_DEFLATED, 15 + 16, 9, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string longText() {
    std::string text;
    std::uint32_t state = 1;
    for (int i = 0; i < 700'000; ++i) text += static_cast<char>((state = state * 1664525U + 1013904223U) >> 26);
    return text;
}

class InflatingFileTest : public testing::Test {
protected:
    // All that can be read, in pieces of an odd size.
    std::string read(const std::string& bytes) {
        writeFile(folder / "file", bytes);
        InflatingFile file(folder / "file");
        std::string text;
        std::string piece(10'007, '\0');
        while (true) {
            const std::size_t got = file.read(reinterpret_cast<std::byte*>(piece.data()), piece.size());
            text.append(piece, 0, got);
            if (got < piece.size()) break;
        }
        damaged = file.isDamaged();
        truncated = file.isTruncated();
        return text;
    }

    TemporaryFolder folder;
    bool damaged = false;
    bool truncated = false;
    const std::string text = longText();
};

TEST_F(InflatingFileTest, InflatesWhatZlibDeflated) {
    EXPECT_EQ(read(member(text)), text);
    EXPECT_FALSE(damaged || truncated);
}

TEST_F(InflatingFileTest, ReadsAnUncompressedFileAsItIs) {
    EXPECT_EQ(read(text), text);
    EXPECT_EQ(read("\x1f"), "\x1f");
    EXPECT_EQ(read(""), "");
}

// As parallel compressors write them.
TEST_F(InflatingFileTest, JoinsSeveralMembers) {
    EXPECT_EQ(read(member(text) + member("middle") + member("") + member(text)), text + "middle" + text);
    EXPECT_FALSE(damaged);
}

TEST_F(InflatingFileTest, IgnoresWhatFollowsTheLastMember) {
    EXPECT_EQ(read(member(text) + std::string(1000, '\0')), text);
    EXPECT_FALSE(damaged || truncated);
}

TEST_F(InflatingFileTest, EndsEarlyWhereTheFileIsCut) {
    const std::string packed = member(text);
    const std::string got = read(packed.substr(0, packed.size() / 2));
    EXPECT_LT(got.size(), text.size());
    EXPECT_EQ(got, text.substr(0, got.size()));
    EXPECT_TRUE(truncated);
}

// Checksum and length are the last eight bytes.
TEST_F(InflatingFileTest, NoticesAMissingChecksum) {
    const std::string packed = member(text);
    for (const std::size_t missing : {1u, 4u, 8u}) {
        EXPECT_EQ(read(packed.substr(0, packed.size() - missing)), text) << missing;
        EXPECT_TRUE(truncated) << missing;
    }
}

TEST_F(InflatingFileTest, ComparesTheChecksumOfDataThatNobodyReads) {
    std::string packed = member(text);
    packed[packed.size() - 5] ^= 1;
    writeFile(folder / "file", packed);
    InflatingFile file(folder / "file");
    EXPECT_TRUE(file.skip(1000));
    EXPECT_FALSE(file.isDamaged());
    file.finish();
    EXPECT_TRUE(file.isDamaged());
}

TEST_F(InflatingFileTest, NoticesAWrongChecksum) {
    std::string packed = member(text);
    packed[packed.size() - 5] ^= 1; // the last byte of the checksum; four of the length follow
    EXPECT_EQ(read(packed), text);
    EXPECT_TRUE(damaged);
    EXPECT_FALSE(truncated);
}

TEST_F(InflatingFileTest, NoticesInvalidData) {
    std::string packed = member(text);
    packed.replace(packed.size() / 2, 40, std::string(40, '\xff'));
    read(packed);
    EXPECT_TRUE(damaged);
}

TEST_F(InflatingFileTest, SkipsBytes) {
    writeFile(folder / "file", member(text));
    InflatingFile file(folder / "file");
    EXPECT_TRUE(file.skip(600'000));
    std::byte next{};
    EXPECT_EQ(file.read(&next, 1), 1U);
    EXPECT_EQ(static_cast<char>(next), text[600'000]);
    EXPECT_FALSE(file.skip(600'000));
}

TEST_F(InflatingFileTest, ThatDoesNotExistIsEmpty) {
    InflatingFile file(folder / "none");
    std::byte next{};
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ(file.read(&next, 1), 0U);
}

// gzread accepts the file only if header, checksum and length are right.
std::string inflatedByZlib(const std::filesystem::path& path, std::size_t most) {
    std::string text(most, '\0');
    const gzFile file = gzopen(path.c_str(), "rb");
    text.resize(static_cast<std::size_t>(gzread(file, text.data(), static_cast<unsigned>(most))));
    EXPECT_EQ(gzclose(file), Z_OK);
    return text;
}

TEST_F(InflatingFileTest, OfADeflatingFileIsWhatWasWritten) {
    DeflatingFile out(folder / "out.gz", true);
    for (std::size_t at = 0; at < text.size(); at += 9'973) {
        EXPECT_TRUE(
            out.write(std::as_bytes(std::span(text)).subspan(at, std::min<std::size_t>(9'973, text.size() - at))));
    }
    EXPECT_TRUE(out.close());
    EXPECT_EQ(inflatedByZlib(folder / "out.gz", text.size() + 1), text);
}

TEST_F(InflatingFileTest, OfADeflatingFileWithSeveralMembersIsWhatWasWritten) {
    std::string several;
    while (several.size() < 20'000'000) several += text;
    DeflatingFile out(folder / "out.gz", true);
    EXPECT_TRUE(out.write(std::as_bytes(std::span(several))));
    EXPECT_TRUE(out.close());
    EXPECT_TRUE(inflatedByZlib(folder / "out.gz", several.size() + 1) == several); // no megabytes in a message
}

TEST_F(InflatingFileTest, OfADeflatingFileDoesNotDependOnTheThreads) {
    const auto fileMadeWith = [&](int threads) {
        DeflatingFile out(folder / "out.gz", true, threads);
        for (int i = 0; i < 80; ++i) EXPECT_TRUE(out.write(std::as_bytes(std::span(text)))); // four members
        EXPECT_TRUE(out.close());
        return textOf(folder / "out.gz");
    };
    const std::string alone = fileMadeWith(1);
    EXPECT_TRUE(read(alone).size() == 80 * text.size());
    EXPECT_TRUE(fileMadeWith(2) == alone);
    EXPECT_TRUE(fileMadeWith(3) == alone);
}

// Nothing is kept until close() that could be written before.
TEST_F(InflatingFileTest, OfADeflatingFileWithoutThreadsGrowsMemberByMember) {
    DeflatingFile out(folder / "out.gz", true, 0);
    for (int i = 0; i < 80; ++i) EXPECT_TRUE(out.write(std::as_bytes(std::span(text)))); // three members and a part
    EXPECT_GT(std::filesystem::file_size(folder / "out.gz"), 2u << 24);
}

TEST_F(InflatingFileTest, OfAnEmptyDeflatingFileIsEmpty) {
    DeflatingFile out(folder / "out.gz", true);
    EXPECT_TRUE(out.close());
    EXPECT_EQ(read(textOf(folder / "out.gz")), "");
    EXPECT_FALSE(damaged);
}

} // namespace
} // namespace zn::test
