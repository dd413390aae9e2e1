// A run that meets a world in disorder: closed descriptors, a page that cannot be written, odd names.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class Resilience : public testing::Test {
protected:
    Resilience() { writeFile(folder / "a_bold.nii", plainSeries(24).bytes()); }

    CommandResult run(const std::vector<std::string>& options = {}, const std::string& shellPrefix = "") {
        std::vector<std::string> arguments = {
            "run",   (folder / "a_bold.nii").string(), "--components", "2", "--epsilon", "0.9",
            "--out", (folder / "out").string()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments, {{}, {}, shellPrefix});
    }

    TemporaryFolder folder;
};

// A file opened later must not become standard output, and the interrupt channel must not read the image.
TEST_F(Resilience, ClosedDescriptorsDoNotDisturbARun) {
    for (const std::string closed : {"exec <&-;", "exec >&-;", "exec <&- >&-;", "exec <&- >&- 2>&-;"}) {
        const CommandResult result = run({}, closed);
        EXPECT_EQ(result.status, 0) << closed << result.err;
        EXPECT_THAT(namesIn(folder / "out"), Contains("a_desc-ICA_metrics.tsv")) << closed;
        EXPECT_EQ(textOf(folder / "a_bold.nii"), plainSeries(24).bytes()) << closed;
        std::filesystem::remove_all(folder / "out");
    }
}

// A limit on the size of files that only the page exceeds.
TEST_F(Resilience, APageThatCannotBeWrittenCostsThePageAlone) {
    if (!REPORT_IS_BUILT) GTEST_SKIP() << "built without the report";
    const CommandResult result = run({}, "ulimit -f 1000;");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("znica: no report.html was written: "));
    EXPECT_THAT(result.err, HasSubstr((folder / "out/report.html").string()));
    EXPECT_THAT(namesIn(folder / "out"), Contains("a_desc-ICA_components.nii.gz"));
    EXPECT_THAT(namesIn(folder / "out"), Not(Contains(HasSubstr("report.html"))));
}

// Under a limit on the address space.
class ResilienceInLittleSpace : public Resilience {
protected:
    void SetUp() override {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "AddressSanitizer itself maps terabytes";
#endif
    }
};

// The BLAS waits for ever for memory that it cannot map.
TEST_F(ResilienceInLittleSpace, TheLimitIsCountedBeforeTheRun) {
    const CommandResult result = run({}, "ulimit -v 400000;");
    EXPECT_EQ(result.status, 5);
    EXPECT_THAT(result.err, HasSubstr("of address space, but the limit (ulimit -v) leaves 0."));
    EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a_bold.nii"));
}

// No thread's stack fits into the address space. The BLAS notices first, on a machine with several processors.
TEST_F(ResilienceInLittleSpace, WithoutThreadsARunEndsWithASentence) {
    const CommandResult result = run({}, "ulimit -s 8000000; ulimit -v 4000000;");
    EXPECT_EQ(result.status, 5);
    EXPECT_THAT(result.err, testing::EndsWith("znica: no thread can be started; raise the limits on memory and "
                                              "processes (ulimit -v, ulimit -u).\n"));
    EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a_bold.nii"));
}

// The plug-in passes over writes that fail. Only its covariance is longer than this limit.
TEST_F(Resilience, APluginFileThatIsCutIsNoticed) {
    writeFile(folder / "a_bold.nii", plainSeries(60).bytes());
    const CommandResult result = run({"--no-report"}, "ulimit -f 70;"); // 35 KiB
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("Covariance.txt was not written completely"));
    EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a_bold.nii"));
}

// Found before the data are read, not after the analysis.
TEST_F(Resilience, ANameThatIsTooLongIsRefusedAtOnce) {
    const std::filesystem::path image = folder / (std::string(240, 'x') + ".nii");
    writeFile(image, plainSeries(24).bytes());
    const CommandResult byImage = znica({"run", image.string(), "--out", (folder / "out").string()});
    EXPECT_EQ(byImage.status, 3);
    EXPECT_THAT(byImage.err, HasSubstr("the image's name is too long: the result would hold xxx"));
    const std::string out = (folder / std::string(256, 'o')).string();
    const CommandResult byFolder = znica({"run", (folder / "a_bold.nii").string(), "--out", out});
    EXPECT_EQ(byFolder.status, 1);
    EXPECT_EQ(byFolder.err, "znica: " + out + " is too long a name; choose a shorter one.\n");
    EXPECT_EQ(namesIn(folder.path()).size(), 2U);
}

// As spreadsheets write it where the first column has no name.
TEST_F(Resilience, APredictorWithoutANameKeepsItsColumn) {
    std::string design = "\tsecond\n";
    for (int t = 0; t < 24; ++t) design += std::to_string(t) + "\t" + std::to_string(t % 3) + "\n";
    writeFile(folder / "design.tsv", design);
    const CommandResult result = run({"--design", (folder / "design.tsv").string()});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    const auto table = tableIn(folder / "out/a_desc-ICA_design.tsv");
    for (const auto& row : table) EXPECT_EQ(row.size(), 2U);
    EXPECT_EQ(table.front()[1], "second");
}

TEST_F(Resilience, TheNextRunRemovesWhatAKilledOneLeft) {
    RunningCommand endless({"run", (folder / "a_bold.nii").string(), "--epsilon", "1e-30", "--max-iterations",
                            "100000000", "--components", "2", "--out", (folder / "killed").string()},
                           {});
    for (int i = 0; i < 1000 && namesIn(folder.path()).size() < 2; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(endless.end(SIGKILL).status, 128 + SIGKILL);
    ASSERT_EQ(namesIn(folder.path()).size(), 2U);
    EXPECT_EQ(run().status, 0);
    EXPECT_THAT(namesIn(folder.path()), testing::ElementsAre("a_bold.nii", "out"));
}

} // namespace
} // namespace zn::test
