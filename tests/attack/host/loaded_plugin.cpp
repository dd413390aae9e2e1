#include "attack/host/loaded_plugin.h"

#include "host/plugin_object.h"

#include <filesystem>
#include <stdexcept>

#include <dlfcn.h>

namespace zn::test {

namespace {

std::string pathOf(const std::string& name) {
    return (std::filesystem::current_path() / name).string();
}

} // namespace

LoadedPlugin::LoadedPlugin(const std::string& name, int flags) {
    const std::string path = pathOf(name);
    if (!std::filesystem::exists(path)) std::filesystem::copy_file(ZN_PLUGIN_FILE, path);
    library_ = dlopen(path.c_str(), RTLD_NOW | flags);
    if (!library_) throw std::runtime_error(dlerror());
    object_ = reinterpret_cast<void* (*)()>(dlsym(library_, "createPlugin"))();
}

LoadedPlugin::~LoadedPlugin() {
    destroyPlugin(object_);
    dlclose(library_);
}

bool LoadedPlugin::initPlugin() {
    return callInitPlugin(object_);
}

bool LoadedPlugin::execute() {
    return callExecute(object_);
}

bool LoadedPlugin::isLoaded(const std::string& name) {
    void* library = dlopen(pathOf(name).c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (library) dlclose(library);
    return library != nullptr;
}

} // namespace zn::test
