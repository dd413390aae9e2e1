#pragma once

// The calls of Linux that the headless host makes for its result folder and that WebAssembly's C library lacks. The
// folder lies in memory there, and nobody else works in it.
#include <cerrno>
#include <cstdint>

constexpr unsigned RENAME_NOREPLACE = 1;
constexpr unsigned RENAME_EXCHANGE = 2;

/// Not available: callers rename without these flags then.
inline int renameat2(int, const char*, int, const char*, unsigned) {
    errno = ENOSYS;
    return -1;
}

struct statx {
    std::uint64_t stx_attributes = 0;
    std::uint32_t stx_dev_major = 0;
    std::uint32_t stx_dev_minor = 0;
};
constexpr unsigned STATX_INO = 0x100;
constexpr std::uint64_t STATX_ATTR_MOUNT_ROOT = 0x2000;

/// No folder is a mount point.
inline int statx(int, const char*, int, unsigned, struct statx*) {
    errno = ENOSYS;
    return -1;
}
