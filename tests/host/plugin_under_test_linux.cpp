#include "host/plugin_under_test.h"

#include "plugin/ica_plugin.h"

#include <stdexcept>

#include <dlfcn.h>

namespace zn::testing {

namespace {

template <class Function> Function lookUp(void* library, const char* name) {
    void* address = dlsym(library, name);
    if (!address) throw std::runtime_error(dlerror());
    return reinterpret_cast<Function>(address);
}

} // namespace

PluginUnderTest::PluginUnderTest() : library_(dlopen(ZN_PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL)), object_(nullptr) {
    if (!library_) throw std::runtime_error(dlerror());
    object_ = lookUp<TMPluginInterface* (*)()>(library_, "createPlugin")();
}

// The library stays loaded: the leak report names its functions only as long as it is there.
PluginUnderTest::~PluginUnderTest() {
    delete static_cast<TMPluginInterface*>(object_);
}

const char* PluginUnderTest::text(const char* function) {
    return lookUp<const char* (*)()>(library_, function)();
}

bool PluginUnderTest::initPlugin() {
    return static_cast<TMPluginInterface*>(object_)->initPlugin();
}

bool PluginUnderTest::execute() {
    return static_cast<TMPluginInterface*>(object_)->execute();
}

} // namespace zn::testing
