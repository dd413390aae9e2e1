// In place of headless/run/plugin_library.cpp: the plug-in is linked in.
#include "headless/failure/failure.h"
#include "headless/run/plugin_library.h"

#include <string_view>

extern "C" {
TMPluginInterface* createPlugin();
const char* getPluginName();
const char* getPluginDescription();
const char* getAuthor();
const char* getPluginVersion();
}

namespace zn::headless {

namespace {

constexpr char kName[] = "ICAPlugin";

struct NamedFunction {
    std::string_view name;
    void* address;
};

const NamedFunction kFunctions[] = {
    {"createPlugin", reinterpret_cast<void*>(createPlugin)},
    {"getPluginName", reinterpret_cast<void*>(getPluginName)},
    {"getPluginDescription", reinterpret_cast<void*>(getPluginDescription)},
    {"getAuthor", reinterpret_cast<void*>(getAuthor)},
    {"getPluginVersion", reinterpret_cast<void*>(getPluginVersion)},
};

} // namespace

PluginLibrary::PluginLibrary(const std::filesystem::path& file) : file_(file), handle_(nullptr, nullptr) {
    if (file != kName) throw Failure(ExitStatus::kInput, "another plug-in cannot be loaded here; leave out --plugin.");
}

void* PluginLibrary::function(const char* name) const {
    for (const NamedFunction& function : kFunctions) {
        if (function.name == name) return function.address;
    }
    return nullptr;
}

std::string PluginLibrary::text(const char* name) const {
    return reinterpret_cast<const char* (*)()>(function(name))();
}

std::unique_ptr<TMPluginInterface> PluginLibrary::create() const {
    std::unique_ptr<TMPluginInterface> plugin(createPlugin());
    if (!plugin) throw Failure(ExitStatus::kMemory, "there is not enough memory to start the plug-in.");
    return plugin;
}

std::filesystem::path findPlugin() {
    return kName;
}

} // namespace zn::headless
