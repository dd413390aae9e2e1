#include "host/plugin_object.h"

// As declared by a host, which has no header of the plug-in: what counts is the order of the virtual functions.
class TMPluginInterface {
public:
    virtual ~TMPluginInterface();
    virtual bool execute() = 0;
    virtual bool initPlugin() = 0;
};

static TMPluginInterface* plugin(void* object) {
    return static_cast<TMPluginInterface*>(object);
}

bool callInitPlugin(void* object) {
    return plugin(object)->initPlugin();
}

bool callExecute(void* object) {
    return plugin(object)->execute();
}

void destroyPlugin(void* object) {
    delete plugin(object);
}
