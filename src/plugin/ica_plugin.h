#pragma once

#include "plugin/plugin_export.h"

// The classes as the host knows them. The order of the virtual operations is the order of the virtual table's slots
// and must not change.

/// What the host calls; it owns the object and destroys it through the virtual destructor.
class PLUGIN_EXPORT TMPluginInterface {
public:
    TMPluginInterface();
    TMPluginInterface(const TMPluginInterface& other);
    TMPluginInterface& operator=(const TMPluginInterface& other);
    virtual ~TMPluginInterface();

    /// One whole run. Requires that initPlugin has returned true; may be called repeatedly.
    virtual bool execute() = 0;
    /// Binds the host's functions and checks its version.
    virtual bool initPlugin() = 0;
};

/// The plug-in. It has no state: a run lives in its driver, the host's functions in their table.
class PLUGIN_EXPORT ICAPlugin : public TMPluginInterface {
public:
    ICAPlugin();
    ~ICAPlugin() override;

    bool execute() override;
    bool initPlugin() override;
};

/// Called by the host once, after loading. Null when out of memory; no exception leaves the library.
extern "C" PLUGIN_EXPORT TMPluginInterface* createPlugin();
