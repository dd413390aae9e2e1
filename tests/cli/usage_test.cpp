#include "cli/command.h"
#include "files.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// 80 columns, 40 lines.
void expectToFitOnAScreen(const std::string& help) {
    EXPECT_LE(std::count(help.begin(), help.end(), '\n'), 40) << help;
    std::istringstream lines(help);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
}

TEST(Usage, HelpOfEveryCommandFitsOnAScreenAndSucceeds) {
    for (const char* command : {"run", "simulate", "score", "info", "compare", "report"}) {
        const CommandResult result = znica({command, "--help"});
        EXPECT_EQ(result.status, 0);
        expectToFitOnAScreen(result.out);
        EXPECT_THAT(result.out, HasSubstr("Usage: znica "));
        EXPECT_THAT(result.out, HasSubstr("\n  znica " + std::string(command))) << "no example";
    }
}

TEST(Usage, OptionsThatAreRarelyNeededAreListedByHelpAll) {
    const std::string help = znica({"run", "--help"}).out;
    const std::string all = znica({"run", "--help-all"}).out;
    EXPECT_THAT(help, Not(HasSubstr("--epsilon")));
    EXPECT_THAT(help, HasSubstr("--help-all"));
    EXPECT_THAT(all, HasSubstr("--epsilon"));
    EXPECT_THAT(all, HasSubstr("--components"));
}

TEST(Usage, TheFirstHelpFitsOnAScreenAndListsEveryExitStatus) {
    const CommandResult result = znica({"--help"});
    expectToFitOnAScreen(result.out);
    for (const char* status : {"  0 ", "  1 ", "  2 ", "  3 ", "  4 ", "  5 ", "  129 ", "  130 ", "  143 "}) {
        EXPECT_THAT(result.out, HasSubstr(status));
    }
}

TEST(Usage, TheBashCompletionCompletesCommandsAndOptions) {
    const std::string script = znica({"--bash-completion"}).out;
    const auto completed = [&](const std::string& words, int position) {
        const std::string ask = script + "\nCOMP_WORDS=(" + words + ") COMP_CWORD=" + std::to_string(position) +
                                "; _znica; echo \"${COMPREPLY[*]}\"";
        std::string quoted; // for the shell: a quote ends the text, is escaped, and begins it again
        for (const char c : ask) quoted += c == '\'' ? "'\\''" : std::string(1, c);
        FILE* bash = popen(("bash -c '" + quoted + "'").c_str(), "r");
        char line[4096] = "";
        const char* read = std::fgets(line, sizeof line, bash);
        pclose(bash);
        return std::string(read ? line : "");
    };
    EXPECT_EQ(completed("znica si", 1), "simulate\n");
    EXPECT_EQ(completed("znica run --se", 2), "--seed\n");
    EXPECT_EQ(completed("znica compare --fo", 2), "--force\n");
}

TEST(Usage, TheVersionIsPrintedOnRequest) {
    const CommandResult result = znica({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "znica " ZNICA_VERSION "\n");
}

TEST(Usage, TheVersionMayBeAskedForAfterACommand) {
    const std::vector<std::vector<std::string>> requests = {
        {"run", "--version"}, {"run", "b.nii", "--out", "o", "--version"}, {"group", "--version"}};
    for (const auto& request : requests) {
        const CommandResult result = znica(request);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, "znica " ZNICA_VERSION "\n");
    }
    EXPECT_THAT(znica({"run", "--help-all"}).out, Not(HasSubstr("--version")));
}

TEST(Usage, AWrongCommandIsNamedWithTheValidOnes) {
    EXPECT_EQ(znica({"rum", "bold.nii"}).err, "znica: rum is not a command; did you mean run?; the commands are run, "
                                              "bids, denoise, group, simulate, score, info, "
                                              "compare, report (see znica --help)\n");
    EXPECT_EQ(znica({}).err, "znica: name a command: run, bids, denoise, group, simulate, score, info, compare, report "
                             "(see znica --help)\n");
}

TEST(Usage, ARepetitionTimeInMillisecondsIsRefusedWithAHint) {
    for (const std::string time : {"2000", "0", "20.5", "two", "nan"}) {
        const CommandResult result = znica({"run", "bold.nii", "--out", "o", "--tr", time});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "znica: --tr: " + time +
                                  " is not a repetition time; give seconds from 0.001 to 20 "
                                  "(2000 ms is 2) (see znica run --help)\n");
    }
}

TEST(Usage, AnInvalidNumberIsRefusedWithWhatIsNeeded) {
    const std::vector<std::vector<std::string>> cases = {
        {"run", "--epsilon", "a number above 0 and up to 1", "nan", "inf", "0", "2", "1e-60", "0.1x"},
        {"run", "--z-threshold", "a number from 0.1 to 100", "nan", "0.09", "101", "-inf"},
        {"run", "--memory", "a number above 0, in GiB", "nan", "inf", "0", "-1", "1GB"},
        {"run", "--seed", "a whole number from 0 to 4294967295", "-1", "4294967296", "1.5", "soon"},
        {"run", "--nonlinearity", "tanh, gauss or cube", "0", "1", "2", "pow3", "TANH"},
        {"simulate", "--noise", "a number from 0 to 100", "nan", "-1", "100.5"},
        {"simulate", "--seed", "a whole number from 0 to 18446744073709551615", "-1", "18446744073709551616", "x"}};
    for (const auto& refused : cases) {
        for (std::size_t i = 3; i < refused.size(); ++i) {
            std::vector<std::string> arguments = {refused[0], "--out", "o", refused[1] + "=" + refused[i]};
            if (refused[0] == "run") arguments.emplace_back("bold.nii");
            const CommandResult result = znica(arguments);
            EXPECT_EQ(result.status, 2) << refused[1] << refused[i];
            EXPECT_THAT(result.err, StartsWith("znica: " + refused[1] + ": needs " + refused[2] + "; got " +
                                               refused[i] + " (see znica " + refused[0] + " --help)"));
        }
    }
}

TEST(Usage, AMisspeltOptionIsAnsweredWithTheNearestOne) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> wrong = {
        {{"run", "b.nii", "--out", "o", "--component", "3"},
         "--component is not an option of znica run; did you mean --components? (see znica run --help)"},
        {{"run", "b.nii", "--out", "o", "--component=3"},
         "--component is not an option of znica run; did you mean --components? (see znica run --help)"},
        {{"run", "b.nii", "--output", "o"},
         "--output is not an option of znica run; did you mean --out? (see znica run --help)"},
        {{"run", "b.nii", "--out", "o", "--epsilno", "1"},
         "--epsilno is not an option of znica run; did you mean --epsilon? (see znica run --help)"},
        {{"run", "b.nii", "--out", "o", "--wavelets"},
         "--wavelets is not an option of znica run (see znica run --help)"},
        {{"compare", "a", "b", "--fource"},
         "--fource is not an option of znica compare; did you mean --force? (see znica compare --help)"},
        {{"score", "a", "--thruth", "b"},
         "--thruth is not an option of znica score; did you mean --truth? (see znica score --help)"},
        {{"run", "--verison"},
         "--verison is not an option of znica run; did you mean --version? (see znica run --help)"},
        {{"--vresion"}, "--vresion is not an option of znica; did you mean --version? (see znica --help)"},
        {{"simualte"},
         "simualte is not a command; did you mean simulate?; the commands are run, bids, denoise, group, simulate, "
         "score, "
         "info, "
         "compare, "
         "report (see znica --help)"}};
    for (const auto& [arguments, complaint] : wrong) {
        const CommandResult result = znica(arguments);
        EXPECT_EQ(result.status, 2) << complaint;
        EXPECT_EQ(result.err, "znica: " + complaint + "\n");
    }
}

TEST(Usage, AFlagTakesNoValue) {
    for (const char* flag : {"--quiet=0", "--quiet=no", "--quiet=99999999999999999999"}) {
        const CommandResult result = znica({"run", "b.nii", "--out", "o", flag});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "znica: --quiet takes no value (see znica run --help)\n");
    }
}

TEST(Usage, WhatTheParserRefusesIsSaidInPlainWords) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> wrong = {
        {{"run", "b.nii", "--out", "o", "--components", "2", "--components", "3"}, "--components is given twice"},
        {{"run", "b.nii", "--out", "o", "--seed", "1", "--seed", "2", "--seed", "3"}, "--seed is given 3 times"},
        {{"run", "b.nii", "c.nii", "--out", "o"},
         "c.nii is one argument too many; usage: znica run BOLD --out DIR [option...]"},
        {{"run", "b.nii", "--out="}, "--out needs a value: --out DIR"},
        {{"run", "b.nii", "--out"}, "--out needs a value: --out DIR"},
        {{"run", "b.nii", "--out", "o", "--repeats", "0"}, "--repeats: needs 1 to 1000; got 0"},
        {{"run", "b.nii", "--out", "o", "--repeats", "two"}, "--repeats: needs 1 to 1000; got two"},
        {{"run", "b.nii", "--out", "o", "--quiet", "--verbose"}, "give --quiet or --verbose, not both"},
        {{"simulate", "--out", "o", "--size", "huge"}, "--size: needs tiny, small, medium or large; got huge"},
        {{"denoise", "r", "b.nii", "--out", "o", "--labels", "l.tsv", "--reject", "1"},
         "give --labels or --reject, not both"}};
    for (const auto& [arguments, complaint] : wrong) {
        const CommandResult result = znica(arguments);
        EXPECT_EQ(result.status, 2) << complaint;
        EXPECT_EQ(result.err, "znica: " + complaint + " (see znica " + arguments[0] + " --help)\n");
    }
}

TEST(Usage, NamesMayBeginWithADash) {
    const TemporaryFolder folder;
    writeFile(folder / "-lead.nii", "");
    const Surroundings there = {folder.path(), {}, {}};
    EXPECT_EQ(znica({"run", "--out", "o", "--", "-lead.nii"}, there).err,
              "znica: -lead.nii is empty; export or copy the image again.\n");
    EXPECT_EQ(znica({"run", "--out", "o", "-lead.nii"}, there).err,
              "znica: -lead.nii is not an option of znica run; for the file of this name, write ./-lead.nii (see znica "
              "run --help)\n");
    EXPECT_EQ(znica({"run", "--", "-lead.nii"}, there).err, "znica: --out is required (see znica run --help)\n");
}

TEST(Usage, HelpIsAlsoACommand) {
    EXPECT_EQ(znica({"help"}).out, znica({"--help"}).out);
    const CommandResult help = znica({"help", "run"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out, znica({"run", "--help"}).out);
}

TEST(Usage, EveryCommandHasAllOfItsHelp) {
    for (const char* command : {"simulate", "score", "info", "compare", "report", "group", "denoise", "bids", "run"}) {
        const CommandResult help = znica({command, "--help-all"});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_THAT(help.out, HasSubstr(std::string("Usage: znica ") + command));
    }
    EXPECT_EQ(znica({"simulate", "--help-all"}).out, znica({"simulate", "--help"}).out);
    EXPECT_EQ(znica({"--help-all"}).out, znica({"--help"}).out);
}

TEST(Usage, ColumnsNeedConfoundsAndNames) {
    EXPECT_THAT(znica({"run", "b.nii", "--out", "o", "--columns", "a"}).err,
                HasSubstr("--columns requires --confounds"));
    for (const char* columns : {"a,,b", ",a", "a,"}) {
        const CommandResult result =
            znica({"run", "b.nii", "--out", "o", "--confounds", "c.tsv", "--columns", columns});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, std::string("znica: --columns: needs names separated by commas, such as trans_x,rot_z; "
                                          "got ") +
                                  columns + " (see znica run --help)\n");
    }
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
        {"compare", "a"},
        {"run", "bold.nii", "--out", "o", "--seed", "soon"},
        {"run", "bold.nii", "--out", "o", "--threads", "0"},
        {"run", "bold.nii", "--out", "o", "--repeats", "0"},
        {"run", "bold.nii", "--out", "o", "--quiet", "--verbose"},
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
