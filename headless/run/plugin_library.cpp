#include "headless/run/plugin_library.h"

#include "headless/failure/failure.h"

#include <array>

#include <dlfcn.h>

namespace zn::headless {

namespace fs = std::filesystem;

namespace {

constexpr std::array<const char*, 7> kFunctions = {"createPlugin", "getPluginName", "getPluginDescription",
                                                   "getAuthor",    "getHelpFile",   "getPluginVersion",
                                                   "getGUIScript"};

void* open(const fs::path& file) {
    if (!fs::exists(file)) {
        throw Failure(ExitStatus::kInput, "the plug-in " + file.string() + " does not exist; check --plugin.");
    }
    void* handle = dlopen(fs::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const char* why = dlerror();
        throw Failure(ExitStatus::kInput,
                      "the plug-in " + file.string() + " cannot be loaded: " + (why ? why : "no reason given") + ".");
    }
    return handle;
}

} // namespace

PluginLibrary::PluginLibrary(const fs::path& file) : file_(file), handle_(open(file), dlclose) {
    for (const char* name : kFunctions) {
        if (!dlsym(handle_.get(), name)) {
            throw Failure(ExitStatus::kInput,
                          file.string() + " is not a plug-in of this host: it lacks the function " + name + ".");
        }
    }
}

void* PluginLibrary::function(const char* name) const {
    return dlsym(handle_.get(), name);
}

std::string PluginLibrary::text(const char* name) const {
    const char* text = reinterpret_cast<const char* (*)()>(function(name))();
    return text ? text : "";
}

std::unique_ptr<TMPluginInterface> PluginLibrary::create() const {
    std::unique_ptr<TMPluginInterface> plugin(reinterpret_cast<TMPluginInterface* (*)()>(function("createPlugin"))());
    if (!plugin) throw Failure(ExitStatus::kMemory, "there is not enough memory to start the plug-in.");
    return plugin;
}

fs::path findPlugin() {
    const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
    for (const char* place : {"ICAPlugin.so", "../lib/znica/ICAPlugin.so", "../lib/ICAPlugin.so"}) {
        fs::path file = (folder / place).lexically_normal();
        if (fs::exists(file)) return file;
    }
    throw Failure(ExitStatus::kOther, "ICAPlugin.so was not found beside the command in " + folder.string() +
                                          "; specify it with --plugin.");
}

} // namespace zn::headless
