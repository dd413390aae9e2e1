// What the plug-in file exports and what it depends on, read with the tools of the platform.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <set>
#include <sstream>
#include <string>

namespace zn::test {
namespace {

std::string outputOf(const std::string& command) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    EXPECT_TRUE(pipe);
    std::string output;
    std::array<char, 4096> part{};
    while (std::fgets(part.data(), part.size(), pipe.get())) output += part.data();
    return output;
}

TEST(PluginFile, ExportsSevenFunctionsAndTheTwoClassesAndNothingElse) {
    std::set<std::string> names;
    std::istringstream lines(outputOf("nm -D --defined-only --demangle '" ZN_PLUGIN_FILE "'"));
    for (std::string line; std::getline(lines, line);) names.insert(line.substr(19)); // after address and kind
    EXPECT_THAT(
        names,
        testing::UnorderedElementsAre(
            "createPlugin", "getPluginName", "getPluginDescription", "getAuthor", "getHelpFile", "getPluginVersion",
            "getGUIScript", //
            "TMPluginInterface::TMPluginInterface()", "TMPluginInterface::TMPluginInterface(TMPluginInterface const&)",
            "TMPluginInterface::operator=(TMPluginInterface const&)", "TMPluginInterface::~TMPluginInterface()",
            "vtable for TMPluginInterface", "typeinfo for TMPluginInterface", "typeinfo name for TMPluginInterface", //
            "ICAPlugin::ICAPlugin()", "ICAPlugin::~ICAPlugin()", "ICAPlugin::execute()", "ICAPlugin::initPlugin()",
            "vtable for ICAPlugin", "typeinfo for ICAPlugin", "typeinfo name for ICAPlugin"));
}

TEST(PluginFile, DependsOnTheStandardLibraryAlone) {
    std::set<std::string> libraries;
    std::istringstream words(outputOf("objdump -p '" ZN_PLUGIN_FILE "' | sed -n 's/^ *NEEDED *//p'"));
    for (std::string name; words >> name;) libraries.insert(name);
    libraries.erase("libasan.so.8"); // a sanitizer build also needs the sanitizer's library
    libraries.erase("libubsan.so.1");
    libraries.erase("ld-linux-x86-64.so.2");
    EXPECT_THAT(libraries, testing::IsSubsetOf({"libstdc++.so.6", "libm.so.6", "libgcc_s.so.1", "libc.so.6"}));
    EXPECT_THAT(libraries, testing::Contains("libstdc++.so.6"));
}

} // namespace
} // namespace zn::test
