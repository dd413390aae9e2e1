#pragma once

namespace zn {

struct HostVersion {
    int major;
    int minor;
    int patch;
};

/// Whether the plug-in runs in this version of the host: 2.2.0 or higher.
constexpr bool isSupported(const HostVersion& version) {
    if (version.major != 2) return version.major > 2;
    if (version.minor != 2) return version.minor > 2;
    return version.patch >= 0;
}

} // namespace zn
