#include "host/plugin_under_test.h"

#include "host/plugin_object.h"
#include "host/shared_library.h"

namespace zn::test {

namespace {

// Never unloaded: the leak report can name its functions only while it is loaded.
const SharedLibrary& library() {
    static const auto* loaded = new SharedLibrary(ZN_PLUGIN_FILE);
    return *loaded;
}

template <class Function> Function lookUp(const char* name) {
    return reinterpret_cast<Function>(library().address(name));
}

} // namespace

PluginUnderTest::PluginUnderTest() : object_(lookUp<void* (*)()>("createPlugin")()) {}

PluginUnderTest::~PluginUnderTest() {
    destroyPlugin(object_);
}

const char* PluginUnderTest::text(const char* function) {
    return lookUp<const char* (*)()>(function)();
}

bool PluginUnderTest::initPlugin() {
    return callInitPlugin(object_);
}

bool PluginUnderTest::execute() {
    return callExecute(object_);
}

} // namespace zn::test
