// A module with the functions that binding the plug-in needs, all empty; built under several file names and with single
// names left out, to see which module the plug-in binds and which names it requires.

#include "host/host_function.h"

/// How often this module has been asked for its version.
ZN_HOST_FUNCTION int smallHostAsked;
int smallHostAsked = 0;

/// The last text given to its message box.
ZN_HOST_FUNCTION const char* smallHostMessage;
const char* smallHostMessage = "";

ZN_HOST_FUNCTION void znGetVersionOfTesmiraZN(int* major, int* minor, int* patch) {
    ++smallHostAsked;
    *major = 2;
    *minor = 2;
    *patch = 0;
}

ZN_HOST_FUNCTION void znMessageBox(const char* text) {
    smallHostMessage = text;
}

#define ZN_UNUSED(name)                                                                                                \
    ZN_HOST_FUNCTION void name() {}
ZN_UNUSED(znShowLogTab)
ZN_UNUSED(znLogText)
ZN_UNUSED(znPlotBars)
ZN_UNUSED(zn_intel_matrix_matrix_mult_f)
ZN_UNUSED(zn_intel_matrix_matrix_mult_d)
ZN_UNUSED(zn_intel_matrix_vector_mult_f)
ZN_UNUSED(zn_intel_matrix_vector_mult_d)
