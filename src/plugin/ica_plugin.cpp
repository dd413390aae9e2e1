#include "plugin/ica_plugin.h"

#include "plugin/run_driver.h"

#include <new>

TMPluginInterface::TMPluginInterface() {}

TMPluginInterface::TMPluginInterface(const TMPluginInterface& /*other*/) {}

// There is no state to copy.
TMPluginInterface& TMPluginInterface::operator=(const TMPluginInterface& /*other*/) {
    return *this;
}

TMPluginInterface::~TMPluginInterface() {}

ICAPlugin::ICAPlugin() {}

ICAPlugin::~ICAPlugin() {}

bool ICAPlugin::execute() {
    return executeRun();
}

bool ICAPlugin::initPlugin() {
    return initialisePlugin();
}

TMPluginInterface* createPlugin() {
    return new (std::nothrow) ICAPlugin;
}
