#include "headless/cli/commands.h"

#include "headless/cli/plain_text.h"
#include "headless/cli/standard_output.h"
#include "headless/run/plugin_library.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include <dlfcn.h>

namespace zn::headless {

namespace {

const std::set<std::string_view> kWorking = {
#define ZN(result, name, parameters) #name,
#define ZN_UNUSED(name)
#include "host/host_functions.def"
#include "host/host_matrix_products.def"
#undef ZN_UNUSED
#undef ZN
};

bool isFunctionName(std::string_view text) {
    const bool begins =
        text.starts_with("zn_intel_") || (text.starts_with("zn") && text.size() > 2 && std::isupper(text[2]) != 0);
    return begins && std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isalnum(c) || c == '_'; });
}

// A plug-in looks the functions up by name, so their names appear in its file as null-terminated strings.
std::set<std::string> functionsNamedIn(const std::filesystem::path& file) {
    const std::string bytes = readWholeFile(file);
    std::set<std::string> names;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\0', start), bytes.size());
        const std::string_view text = std::string_view(bytes).substr(start, end - start);
        if (isFunctionName(text)) names.emplace(text);
        start = end + 1;
    }
    return names;
}

void print(const char* title, const std::string& text) {
    std::printf("%s: %s\n", title, text.c_str());
}

void printNames(const char* title, const std::set<std::string>& names) {
    if (names.empty()) return;
    std::printf("%s (%zu):\n", title, names.size());
    for (const std::string& name : names) std::printf("  %s\n", name.c_str());
}

ExitStatus printInfo(const std::filesystem::path& plugin) {
    const PluginLibrary library(plugin.empty() ? findPlugin() : plugin);
    print("name", plainText(library.name()));
    print("version", plainText(library.version()));
    print("author", plainText(library.author()));
    print("description", plainText(library.description()));
    print("file", library.file().string());

    std::set<std::string> bound;
    std::set<std::string> empty;
    std::set<std::string> missing;
    for (const std::string& name : functionsNamedIn(library.file())) {
        const bool works = kWorking.contains(name);
        (!dlsym(RTLD_DEFAULT, name.c_str()) ? missing : works ? bound : empty).insert(name);
    }
    std::printf("host functions: %zu work here, %zu are not available in this host, %zu do not exist\n", bound.size(),
                empty.size(), missing.size());
    printNames("working", bound);
    printNames("not available", empty);
    printNames("nonexistent", missing);
    requirePrinted();
    return ExitStatus::kDone;
}

} // namespace

void addInfoCommand(CLI::App& app, Action& action) {
    const auto plugin = std::make_shared<std::filesystem::path>();
    auto* info =
        app.add_subcommand("info", "Print what the plug-in says about itself and which host functions it finds.");
    info->add_option("--plugin", *plugin, "plug-in file (the one beside this command)")->type_name("FILE");
    info->footer("Example:\n  znica info\n");
    info->callback([plugin, &action] { action = [plugin](UnfinishedWork&) { return printInfo(*plugin); }; });
}

} // namespace zn::headless
