#include "cli/command.h"
#include "files.h"

#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

// "--high-pass" as a manual page writes it.
std::string roffName(std::string name) {
    for (std::size_t at = 0; (at = name.find('-', at)) != name.npos; at += 2) name.insert(at, "\\");
    return name;
}

// The commands as `znica --help` lists them.
std::vector<std::string> listedCommands() {
    const std::string help = znica({"--help"}).out;
    std::istringstream list(help.substr(help.find("Commands")));
    std::vector<std::string> commands;
    std::string line;
    std::getline(list, line);
    while (std::getline(list, line) && line.starts_with("  ")) {
        if (line[2] != ' ') commands.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    return commands;
}

TEST(ManualPages, TheProgramsPageListsEveryCommand) {
    const TemporaryFolder pages;
    ASSERT_EQ(znica({"--manual-pages", pages.path().string()}).status, 0);
    const std::string page = textOf(pages / "znica.1");
    EXPECT_THAT(page, StartsWith(".TH ZNICA 1 "));
    EXPECT_THAT(page, HasSubstr("130  interrupted"));
    ASSERT_THAT(listedCommands(), Contains("run"));
    for (const std::string& command : listedCommands())
        EXPECT_THAT(page, HasSubstr(".BR znica\\-" + command + " (1)\n"));
}

TEST(ManualPages, EveryCommandHasAPageThatListsAllItsOptions) {
    const TemporaryFolder pages;
    ASSERT_EQ(znica({"--manual-pages", pages.path().string()}).status, 0);
    for (const std::string& command : listedCommands()) {
        const std::string page = textOf(pages / ("znica-" + command + ".1"));
        const CommandResult all = znica({command, "--help-all"});
        std::istringstream help(all.status == 0 ? all.out : znica({command, "--help"}).out);
        int options = 0;
        for (std::string line; std::getline(help, line);) {
            if (!line.starts_with("  --")) continue;
            ++options;
            EXPECT_THAT(page, HasSubstr(".B " + roffName(line.substr(2, line.find(' ', 2) - 2)))) << command;
        }
        EXPECT_GE(options, 1) << command;
    }
}

TEST(ManualPages, PagesThatCannotBeWrittenAreReported) {
    EXPECT_EQ(znica({"--manual-pages", "/nowhere"}).status, 2);
}

} // namespace
} // namespace zn::test
