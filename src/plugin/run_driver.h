#pragma once

// The two operations behind the plug-in class, with C linkage so that the class can be compiled for another C++ ABI
// than the rest. No exception leaves them.

extern "C" {

/// Binds the host's functions, checks its version and its matrix products, and announces the plug-in in its log.
/// False when the plug-in cannot run in this host; where the host can show a message, the user has been told why.
bool initialisePlugin() noexcept;

/// One whole run, from the dialog's parameters to the component maps in the host.
/// False for unusable input or failed numerics, and without any call of the host unless initialisePlugin has succeeded;
/// true for a complete run, for one that ran out of memory, and for one that found no component.
bool executeRun() noexcept;
}
