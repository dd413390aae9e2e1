// What the plug-in file exports and what it depends on, read with the tools of the platform.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>
#include <sstream>
#include <string>

#include <dlfcn.h>

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

std::string fileOf(const void* address) {
    Dl_info module{};
    return dladdr(address, &module) != 0 ? module.dli_fname : "";
}

// The dynamic linker would otherwise take the first copy's functions for the second one's class.
TEST(PluginFile, LoadedTwiceForAllToSeeKeepsItsOwnFunctions) {
    const std::string folder = testing::TempDir();
    std::array<std::string, 2> copies = {folder + "ICAPluginFirst.so", folder + "ICAPluginSecond.so"};
    for (const std::string& copy : copies) {
        std::filesystem::copy_file(ZN_PLUGIN_FILE, copy, std::filesystem::copy_options::overwrite_existing);
        void* library = dlopen(copy.c_str(), RTLD_NOW | RTLD_GLOBAL);
        ASSERT_TRUE(library) << dlerror();
        void* plugin = reinterpret_cast<void* (*)()>(dlsym(library, "createPlugin"))();
        void** table = *static_cast<void***>(plugin); // two destructors, execute, initPlugin
        for (int slot = 0; slot < 4; ++slot) EXPECT_EQ(fileOf(table[slot]), copy) << slot;
        reinterpret_cast<void (*)(void*)>(table[1])(plugin); // the deleting destructor
        std::filesystem::remove(copy);
    }
}

} // namespace
} // namespace zn::test
