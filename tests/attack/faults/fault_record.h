#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

namespace zn::test {

/// The kinds of calls that the injector watches; each stands for all functions that do the same.
enum class Call : std::size_t {
    kOpen,     ///< open, openat, creat, fopen, opendir, fdopendir
    kRead,     ///< read, pread, readv, fread
    kWrite,    ///< write, pwrite, writev, fwrite, fputs
    kClose,    ///< close, fclose
    kRename,   ///< rename, renameat, renameat2
    kMkdir,    ///< mkdir, mkdirat
    kSync,     ///< fsync, fdatasync
    kRemove,   ///< unlink, unlinkat, rmdir, remove
    kList,     ///< readdir
    kAllocate, ///< malloc, calloc, realloc, aligned_alloc, posix_memalign on the main thread
    kThread,   ///< pthread_create
};

inline constexpr std::array<const char*, 11> kCallNames = {"open",  "read",   "write",   "close",  "rename", "mkdir",
                                                           "fsync", "remove", "readdir", "malloc", "thread"};

/// What the injector counts, in a file that it shares with the test, so that the numbers survive any end.
struct FaultRecord {
    std::array<std::atomic<std::uint64_t>, kCallNames.size()> calls;
    std::atomic<std::uint64_t> injected; ///< calls that did not go through unharmed
};

} // namespace zn::test
