#include "plugin/plugin_export.h"

// What the host shows about the plug-in before it creates one. All texts are constants.

extern "C" {

PLUGIN_EXPORT const char* getPluginName() {
    return "Independent Component Analysis (ICA)";
}

/// Simple HTML. "Independen" and "a ICA" are on purpose: the text stays as users know it.
PLUGIN_EXPORT const char* getPluginDescription() {
    return "This plug-in performs a volume-based or cortex-based spatial Independent Component Analysis (ICA) using "
           "the FastICA approach (Hyv&auml;rinen A., <i>Fast and robust fixed-point algorithms for independent "
           "component analysis</i>, IEEE Transactions on Neural Networks 10, 626-634, 1999). "
           "A cortex-based ICA is computed if a cortex mask file is provided. Start the ICA using the \"Independent "
           "Component Analysis\" dialog (\"Analysis -> Independen Component Analysis...\"). The resulting component "
           "maps are saved in a ICA file.<br>";
}

PLUGIN_EXPORT const char* getAuthor() {
    return "<i>The ICA plug-in developers</i>, the ICA plug-in project";
}

PLUGIN_EXPORT const char* getHelpFile() {
    return "";
}

PLUGIN_EXPORT const char* getPluginVersion() {
    return "2.0";
}

PLUGIN_EXPORT const char* getGUIScript() {
    return "";
}
}
