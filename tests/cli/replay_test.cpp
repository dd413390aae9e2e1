// The same seed gives the same result, byte for byte, for any number of threads.
#include "cli/command.h"
#include "files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;

// 22,000 voxels, so that every large product is split into several blocks.
class Replay : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = new TemporaryFolder;
        ASSERT_EQ(znica({"simulate", "--size", "small", "--sources", "5", "--out", (*folder / "s").string()}).status,
                  0);
    }
    static void TearDownTestSuite() { delete folder; }

    // Three components of this sample are found from any start, so a run without a seed never gives up.
    static void run(const std::string& name, std::vector<std::string> options) {
        const std::string stem = (*folder / "s/sub-sim_task-blocks_").string();
        options.insert(options.begin(),
                       {"run", "--as-is", stem + "bold.nii.gz", "--mask", stem + "desc-brain_mask.nii.gz",
                        "--components", "3", "--no-clustering", "--out", (*folder / name).string()});
        const CommandResult result = znica(options);
        ASSERT_EQ(result.status, 0) << result.err;
    }
    static std::string bytes(const std::string& name, const std::string& ending) {
        const auto file = *folder / (name + "/sub-sim_task-blocks_desc-ICA_" + ending);
        EXPECT_TRUE(std::filesystem::exists(file)) << file;
        return textOf(file);
    }
    static CommandResult runWithKernels(const std::string& kernels, const std::string& name) {
        const std::string stem = (*folder / "s/sub-sim_task-blocks_").string();
        return znica({"run", "--as-is", stem + "bold.nii.gz", "--components", "1", "--seed", "1", "--no-clustering",
                      "--no-report", "--out", (*folder / name).string()},
                     {{}, {"OPENBLAS_CORETYPE=" + kernels}, {}});
    }
    static json facts(const std::string& name) { return json::parse(bytes(name, "decomposition.json")); }
    static void expectSameResult(const std::string& a, const std::string& b) {
        for (const char* ending : {"components.nii.gz", "mixing.tsv", "metrics.tsv"}) {
            EXPECT_EQ(bytes(a, ending), bytes(b, ending)) << ending;
        }
    }

    static TemporaryFolder* folder;
};

TemporaryFolder* Replay::folder = nullptr;

TEST_F(Replay, OneThreadAndTwoGiveTheSameBytes) {
    for (const std::string name : {"tanh", "cube"}) {
        run(name + "1", {"--nonlinearity", name, "--seed", "5", "--threads", "1"});
        run(name + "2", {"--nonlinearity", name, "--seed", "5", "--threads", "2"});
        run(name + "3", {"--nonlinearity", name, "--seed", "5", "--threads", "3"});
        expectSameResult(name + "1", name + "2");
        expectSameResult(name + "1", name + "3");
        EXPECT_EQ(facts(name + "2")["Threads"], 2);
    }
}

TEST_F(Replay, TheRecordedSeedReproducesARunWithoutASeed) {
    run("first", {});
    run("again", {"--seed", std::to_string(facts("first")["Seed"].get<std::uint32_t>())});
    expectSameResult("first", "again");
}

TEST_F(Replay, RunsWithoutASeedDiffer) {
    run("one", {});
    run("two", {});
    EXPECT_NE(facts("one")["Seed"], facts("two")["Seed"]); // equal once in four billion times
    EXPECT_NE(bytes("one", "components.nii.gz"), bytes("two", "components.nii.gz"));
}

// The environment variable of the BLAS selects the kernels.
TEST_F(Replay, TheBlasAndItsKernelsAreRecorded) {
#if !defined(__x86_64__)
    GTEST_SKIP() << "the kernels named here are those of one processor family";
#endif
    for (const std::string kernels : {"Nehalem", "Prescott"}) {
        ASSERT_EQ(runWithKernels(kernels, kernels).status, 0);
        const json blas = facts(kernels)["BLAS"];
        const std::string library = blas["Library"];
        if (library.find("DYNAMIC_ARCH") == library.npos)
            GTEST_SKIP() << "this BLAS has only one set of kernels: " << library;
        EXPECT_THAT(library, testing::ContainsRegex("[0-9]+\\.[0-9]+"));
        EXPECT_EQ(blas["Kernels"], kernels);
    }
}

} // namespace
} // namespace zn::test
