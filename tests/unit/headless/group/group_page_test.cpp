// What the page of a group analysis embeds.
#include "headless/group/steps/group_page.h"

#include "files.h"
#include "headless/group/steps/dual_regression_files.h"
#include "headless/group/steps/group_mean.h"
#include "headless/nifti/image_writer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>

#include <nlohmann/json.hpp>
#include <zlib.h>

namespace zn::headless {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// The bytes behind base64, RFC 4648.
std::string decoded(std::string_view text) {
    constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0;
    int count = 0;
    for (const char letter : text) {
        const std::size_t digit = kDigits.find(letter);
        if (digit == std::string_view::npos) continue; // padding
        bits = bits << 6 | static_cast<unsigned>(digit);
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes += static_cast<char>(bits >> count & 0xffu);
    }
    return bytes;
}

std::string inflated(std::string packed) {
    std::string text(std::size_t{1} << 16, '\0');
    z_stream stream{};
    inflateInit2(&stream, 15 + 16);
    stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    inflate(&stream, Z_FINISH);
    text.resize(stream.total_out);
    inflateEnd(&stream);
    return text;
}

// Two voxels of a 3 x 1 x 1 grid, two components, three runs of four volumes.
class GroupPage : public testing::Test {
protected:
    void SetUp() override {
        study.folder = folder.path();
        study.mask = {1, 0, 1};
        writeMask();
        study.grid = readImageHeader(studyMask(folder.path()));
        study.inside = {0, 2};
        study.secondsPerVolume = 2.0;
        for (const char* name : {"sub-01", "sub-02", "sub-03"}) {
            study.runs.push_back({name, "/data/of/a/person/" + std::string(name) + ".nii", 4, "0"});
        }
        maps = {2, {1.0f, -1.0f, 0.25f, -0.5f}, ""};
        test::writeFile(folder / "template.html", "<!-- the data of the run -->");
        test::writeFile(studyFile(folder.path()), studyText(study, "basis"));
        test::writeFile(groupRecordFile(folder.path()), "{\"ComponentsFound\": 2}");
        test::writeFile(folder / "desc-groupICA_metrics.tsv", "component\tstability_iq\nICA_00\t1\nICA_01\t0.5\n");
        test::writeFile(folder / "desc-groupICA_metrics.json", "{}");
        fs::create_directory(folder / "dualreg");
        for (const GroupRun& run : study.runs) writeRun(DualRegressionFiles(run.name));
    }

    void writeMask() {
        const std::int64_t dimensions[8] = {3, 3, 1, 1, 1, 1, 1, 1};
        const std::shared_ptr<nifti_image> grid(nifti_make_new_nim(dimensions, NIFTI_TYPE_UINT8, 0), nifti_image_free);
        ImageWriter writer(studyMask(folder.path()), *grid, {1, NIFTI_TYPE_UINT8, 0.0, ""});
        writer.write(study.mask);
        writer.close();
    }

    void writeRun(const DualRegressionFiles& files) {
        test::writeFile(folder / ("dualreg/" + files.courses), "ICA_00\tICA_01\n1\t0\n-1\t2\n0.5\t0\n0.25\t-2\n");
        test::writeFile(folder / ("dualreg/" + files.record), "{\"ExplainedPercent\": 75}");
        test::writeFile(folder / ("dualreg/" + files.metrics), "component\tgroup_similarity\nICA_00\t1\nICA_01\t1\n");
        writeMaps(folder / ("dualreg/" + files.z), study, {3.0f, -3.2f, 0.0f, 50.8f}, "");
    }

    void make(std::size_t mostBytes = 1 << 20) {
        const GroupTables tables{"run\tICA_00\tICA_01\toutliers\n", "a\tb\tmean_r\tsd_z\n", {false, false, true}};
        makeGroupPage(folder / "template.html", study, maps, tables, mostBytes).write(folder / "page.html");
        page = test::textOf(folder / "page.html");
    }

    std::string block(const std::string& name) const {
        const std::string start = "data-block=\"" + name + "\">";
        const std::size_t at = page.find(start);
        if (at == std::string::npos) return "missing";
        const std::size_t from = at + start.size();
        return inflated(decoded(std::string_view(page).substr(from, page.find('<', from) - from)));
    }

    nlohmann::json group() const { return nlohmann::json::parse(block("group")); }

    test::TemporaryFolder folder;
    GroupStudy study;
    GroupMaps maps;
    std::string page;
};

TEST_F(GroupPage, HoldsTheMaskAndTheGroupsMaps) {
    make();
    EXPECT_EQ(block("mask"), std::string("\1\0\1", 3));
    EXPECT_EQ(block("map-0"), std::string("\xe8\x30\x03\xf8", 4)); // 1000, then -2000 from there: low bytes, high bytes
    EXPECT_EQ(group()["maps"][0]["decimals"], 3);
    EXPECT_EQ(group()["maps"][1]["lowest"], -0.5);
}

TEST_F(GroupPage, HoldsTheMapsOfTheRunsInSteps) {
    make();
    EXPECT_EQ(block("run-1-map-0"), std::string("\x0f\xe1", 2)); // 15 steps of 0.2, then 31 down to -16
    EXPECT_EQ(block("run-1-map-1"), std::string("\x00\x7f", 2)); // 127 steps of 0.4
    EXPECT_THAT(group()["runs"][1]["map_steps"], ElementsAre(0.2, 0.4));
}

TEST_F(GroupPage, HoldsTheCoursesOneAfterAnother) {
    make();
    // In thousandths 1000, -1000, 500, 250, 0, 2000, 0, -2000: the differences' low bytes, then their high bytes.
    EXPECT_EQ(block("courses-0"), std::string("\xe8\x30\xdc\x06\x06\xd0\x30\x30"
                                              "\x03\xf8\x05\xff\xff\x07\xf8\xf8",
                                              16));
    EXPECT_EQ(group()["runs"][0]["course_decimals"], 3);
}

TEST_F(GroupPage, LeavesOutMapsThatDoNotFitButThoseOfOutliersLast) {
    make(1);
    EXPECT_NE(block("run-2-map-0"), "missing"); // the outlier
    EXPECT_EQ(block("run-0-map-0"), "missing");
    EXPECT_TRUE(group()["runs"][0]["map_steps"].is_null());
    EXPECT_EQ(group()["runs"][0]["map_file"], "dualreg/sub-01_desc-dualreg_stat-z_statmap.nii.gz");
    EXPECT_NE(block("courses-0"), "missing");
}

TEST_F(GroupPage, DoesNotSayWhereTheImagesAre) {
    make();
    EXPECT_THAT(block("group"), Not(HasSubstr("person")));
}

TEST(GroupMean, IsThatOfRunsDividedByTheirOwnMeans) {
    GroupMean mean;
    mean.add({100.0f, 300.0f, 10.0f}, {true, true, false}); // 0.5, 1.5, 0.05
    mean.add({3.0f, 1.0f, std::nanf("")}, {true, true, false});
    EXPECT_THAT(mean.values(), ElementsAre(1.0f, 1.0f, 0.025f));
}

TEST(GroupMean, LeavesOutRunsWithoutAMean) {
    GroupMean mean;
    mean.add({-1.0f, 1.0f}, {true, true});
    EXPECT_THAT(mean.values(), testing::IsEmpty());
}

} // namespace
} // namespace zn::headless
