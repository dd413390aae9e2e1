#include "cli/command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Usage, HelpOfEveryCommandFitsOnAScreenAndSucceeds) {
    for (const char* command : {"run", "simulate", "score"}) {
        const CommandResult result = znica({command, "--help"});
        EXPECT_EQ(result.status, 0);
        EXPECT_LE(std::count(result.out.begin(), result.out.end(), '\n'), 50) << command;
        EXPECT_THAT(result.out, HasSubstr("Usage: znica "));
    }
}

TEST(Usage, TheVersionIsToldOnDemand) {
    const CommandResult result = znica({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "znica " ZNICA_VERSION "\n");
}

TEST(Usage, WrongArgumentsEndWithStatusTwoAndOneLine) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"fly"},
        {"run"},
        {"run", "bold.nii"},
        {"run", "bold.nii", "--out", "o", "--components", "0"},
        {"run", "bold.nii", "--out", "o", "--components", "many"},
        {"run", "bold.nii", "--out", "o", "--eigenvalues", "5"},
        {"run", "bold.nii", "--out", "o", "--eigenvalues", "5:3"},
        {"run", "bold.nii", "--out", "o", "--eigenvalues", "0:3"},
        {"run", "bold.nii", "--out", "o", "--eigenvalues", "1:3", "--components", "3"},
        {"run", "bold.nii", "--out", "o", "--nonlinearity", "sine"},
        {"run", "bold.nii", "--out", "o", "--epsilon", "0"},
        {"run", "bold.nii", "--out", "o", "--max-iterations", "0"},
        {"run", "bold.nii", "--out", "o", "--cluster-size", "1"},
        {"run", "bold.nii", "--out", "o", "--cluster-size", "5", "--no-clustering"},
        {"run", "bold.nii", "--out", "o", "--z-threshold", "0"},
        {"run", "bold.nii", "--out", "o", "--roi-names", "names.tsv"},
        {"run", "bold.nii", "--out", "o", "--unknown"},
        {"simulate"},
        {"simulate", "--out", "o", "--size", "gigantic"},
        {"simulate", "--out", "o", "--sources", "0"},
        {"score", "result"},
    };
    for (const auto& arguments : wrong) {
        const CommandResult result = znica(arguments);
        EXPECT_EQ(result.status, 2) << testing::PrintToString(arguments);
        EXPECT_THAT(result.err, StartsWith("znica: "));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
}

} // namespace
} // namespace zn::test
