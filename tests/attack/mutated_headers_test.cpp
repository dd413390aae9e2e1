// Whole runs of the command on small images whose headers were damaged at random: fields set to extremes, bytes
// changed, files cut. The run must end by itself with one of the documented statuses, say why in one line if it failed,
// and leave nothing behind then.
//
// ZN_ATTACK_RUNS is the number of images, ZN_ATTACK_SEED the first of their seeds.
#include "attack/fuzz/damaged_header.h"
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr int kUsualRuns = 60;
constexpr char kLimits[] = ""; // the sanitizer reserves terabytes
#else
constexpr int kUsualRuns = 300;
constexpr char kLimits[] = "ulimit -v 4000000;";
#endif

int setting(const char* name, int usual) {
    const char* text = std::getenv(name);
    return text ? std::atoi(text) : usual;
}

// The same image in the format's second version, with the fields at their places there.
std::string asNifti2(const NiftiBytes& image) {
    std::string file(544, '\0');
    const auto put = [&](std::size_t offset, auto value) {
        std::array<char, sizeof value> bytes;
        std::memcpy(bytes.data(), &value, sizeof value);
        if (image.bigEndian) std::reverse(bytes.begin(), bytes.end());
        file.replace(offset, sizeof value, bytes.data(), sizeof value);
    };
    put(0, std::int32_t{540});
    file.replace(4, 8, std::string("n+2\0\r\n\032\n", 8));
    put(12, image.dataType);
    put(14, image.bitsPerVoxel);
    for (std::size_t i = 0; i < 8; ++i) put(16 + 8 * i, std::int64_t{image.dim[i]});
    for (std::size_t i = 0; i < 8; ++i) put(104 + 8 * i, double{image.pixdim[i]});
    put(168, std::int64_t{544});
    put(348, std::int32_t{image.sformCode});
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            put(400 + 32 * row + 8 * column, double{image.sform[row][column]});
        }
    }
    put(500, std::int32_t{image.units});
    return file + image.data;
}

NiftiBytes series(bool bigEndian) {
    NiftiBytes image = plainSeries();
    image.bigEndian = bigEndian;
    if (!bigEndian) return image;
    for (std::size_t i = 0; i + 1 < image.data.size(); i += 2) std::swap(image.data[i], image.data[i + 1]);
    return image;
}

std::string damagedImage(std::minstd_rand& random) {
    const NiftiBytes whole = series(below(2, random) == 1);
    std::string image = below(2, random) == 1 ? asNifti2(whole) : whole.bytes();
    switch (below(8, random)) {
    case 0: // a byte of the header
        image[below(400, random)] = static_cast<char>(below(256, random));
        break;
    case 1:
        image.resize(below(image.size(), random));
        break;
    case 2: // two fields
        damageHeader(image, random);
        damageHeader(image, random);
        break;
    default:
        damageHeader(image, random);
    }
    return image;
}

class MutatedHeaders : public testing::Test {
protected:
    void attack(int seed) {
        std::minstd_rand random(static_cast<unsigned>(seed));
        const bool compress = below(2, random) == 1;
        const std::string image = damagedImage(random);
        const std::filesystem::path file = folder / (compress ? "series.nii.gz" : "series.nii");
        compress ? writeCompressed(file, image) : writeFile(file, image);
        const std::vector<std::string> arguments = {"run",
                                                    file.string(),
                                                    "--out",
                                                    (folder / "out").string(),
                                                    "--components",
                                                    "2",
                                                    "--seed",
                                                    "1",
                                                    "--threads",
                                                    "1",
                                                    "--max-iterations",
                                                    "50",
                                                    "--mask",
                                                    below(2, random) == 1 ? "auto" : "none",
                                                    "--tr",
                                                    "2"};
        const CommandResult result =
            znica(arguments, {folder.path(), {}, std::string(kLimits) + "exec timeout 120 \"$0\" \"$@\";"});
        SCOPED_TRACE("seed " + std::to_string(seed) + ": status " + std::to_string(result.status) + ", " + result.err);
        requireHonestEnd(result, file);
        ++ends[result.status];
        std::filesystem::remove_all(folder / "out");
        std::filesystem::remove(file);
    }

    void requireHonestEnd(const CommandResult& result, const std::filesystem::path& file) {
        EXPECT_THAT(result.status, testing::AnyOf(0, 1, 3, 4, 5)); // 124: timed out; 129 and above: a signal
        const bool hasResult = result.status == 0 || result.status == 4;
        if (result.status == 0) {
            EXPECT_THAT(result.err, testing::AnyOf("", testing::HasSubstr("template is not installed")));
        } else {
            EXPECT_THAT(result.err, testing::StartsWith("znica: "));
            EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << "one sentence";
        }
        std::vector<std::string> names = {file.filename().string()};
        if (hasResult) names.insert(names.begin(), "out");
        EXPECT_EQ(namesIn(folder.path()), names);
    }

    TemporaryFolder folder;
    std::map<int, int> ends; // status -> runs
};

TEST_F(MutatedHeaders, EndInAResultOrARefusal) {
    const int runs = setting("ZN_ATTACK_RUNS", kUsualRuns);
    const int first = setting("ZN_ATTACK_SEED", 1);
    for (int seed = first; seed < first + runs; ++seed) attack(seed);
    for (const auto& [status, count] : ends) std::printf("status %d: %d runs\n", status, count);
    EXPECT_GT(ends[0], 0) << "some damage does not matter";
    EXPECT_GT(ends[3], 0) << "most does";
}

} // namespace
} // namespace zn::test
