// A module that exports every name of the host's list and does nothing; built under several file names and with
// single names left out, to see which module the plug-in binds and what it misses.

#define SMALL_HOST_FUNCTION extern "C" __attribute__((visibility("default")))

/// How often this module was asked for its version.
SMALL_HOST_FUNCTION int smallHostAsked;
int smallHostAsked = 0;

/// The last text given to its message box.
SMALL_HOST_FUNCTION const char* smallHostMessage;
const char* smallHostMessage = "";

SMALL_HOST_FUNCTION void znGetVersionOfTesmiraZN(int* major, int* minor, int* patch) {
    ++smallHostAsked;
    *major = 2;
    *minor = 2;
    *patch = 0;
}

SMALL_HOST_FUNCTION void znMessageBox(const char* text) {
    smallHostMessage = text;
}

#define ZN_UNUSED(name)                                                                                                \
    SMALL_HOST_FUNCTION void name() {}
ZN_UNUSED(znShowLogTab)
ZN_UNUSED(znLogText)
ZN_UNUSED(znPlotBars)
ZN_UNUSED(zn_intel_matrix_matrix_mult_f)
ZN_UNUSED(zn_intel_matrix_matrix_mult_d)
ZN_UNUSED(zn_intel_matrix_vector_mult_f)
ZN_UNUSED(zn_intel_matrix_vector_mult_d)
