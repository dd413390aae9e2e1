#pragma once

/// A host function: C linkage, visible to the plug-in.
#ifdef _WIN32
#define ZN_HOST_FUNCTION extern "C" __declspec(dllexport)
#else
#define ZN_HOST_FUNCTION extern "C" __attribute__((visibility("default")))
#endif
