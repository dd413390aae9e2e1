// The functions on files and folders, each with the question whether to disturb it before the real one is called.
#include "attack/faults/injector.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

using zn::test::Call;
using zn::test::Disturbance;
using zn::test::isWatched;
using zn::test::watchDescriptor;

namespace {

// The function of this name in the libraries that follow.
template <class Function> Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// Calls open(), which returns a descriptor, unless the call is to fail.
template <class Open> int openedDescriptor(int folder, const char* path, Open open) {
    if (!isWatched(Call::kOpen, folder, path)) return open();
    const Disturbance disturbance(Call::kOpen);
    const int descriptor = disturbance.fails() ? -1 : open();
    watchDescriptor(descriptor, true);
    return descriptor;
}

template <class Open> FILE* openedStream(const char* path, Open open) {
    if (!isWatched(Call::kOpen, AT_FDCWD, path)) return open();
    const Disturbance disturbance(Call::kOpen);
    FILE* stream = disturbance.fails() ? nullptr : open();
    if (stream) watchDescriptor(fileno(stream), true);
    return stream;
}

// Calls a function that returns 0, or -1 with errno set.
template <class Function> int onPath(Call call, int folder, const char* path, const char* second, Function function) {
    if (!isWatched(call, folder, path, second)) return function();
    const Disturbance disturbance(call);
    return disturbance.fails() ? -1 : function();
}

// handle(count) reads or writes that many bytes.
template <class Handle> ssize_t onBytes(Call call, int descriptor, std::size_t count, Handle handle) {
    if (!isWatched(call, descriptor)) return handle(count);
    const Disturbance disturbance(call);
    return disturbance.fails() ? -1 : handle(disturbance.shortened(count));
}

// The same for several pieces of memory; cut short, the last ones are left out, or half of the only one.
template <class Handle> ssize_t onPieces(Call call, int descriptor, const iovec* pieces, int count, Handle handle) {
    if (!isWatched(call, descriptor)) return handle(pieces, count);
    const Disturbance disturbance(call);
    if (disturbance.fails()) return -1;
    iovec first = pieces[0];
    first.iov_len = disturbance.shortened(first.iov_len);
    if (first.iov_len < pieces[0].iov_len) return handle(&first, 1);
    return handle(pieces, count);
}

template <class Close> int closed(int descriptor, Close close) {
    if (!isWatched(Call::kClose, descriptor)) return close();
    watchDescriptor(descriptor, false);
    const Disturbance disturbance(Call::kClose);
    const int result = close();
    if (!disturbance.fails()) return result;
    return -1;
}

mode_t modeIn(int flags, va_list& list) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? static_cast<mode_t>(va_arg(list, unsigned)) : 0;
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

#define ZN_OPEN(name)                                                                                                  \
    int name(const char* path, int flags, ...) {                                                                       \
        static const auto real = next<int(const char*, int, ...)>(#name);                                              \
        va_list list;                                                                                                  \
        va_start(list, flags);                                                                                         \
        const mode_t mode = modeIn(flags, list);                                                                       \
        va_end(list);                                                                                                  \
        return openedDescriptor(AT_FDCWD, path, [&] { return real(path, flags, mode); });                              \
    }
#define ZN_OPENAT(name)                                                                                                \
    int name(int folder, const char* path, int flags, ...) {                                                           \
        static const auto real = next<int(int, const char*, int, ...)>(#name);                                         \
        va_list list;                                                                                                  \
        va_start(list, flags);                                                                                         \
        const mode_t mode = modeIn(flags, list);                                                                       \
        va_end(list);                                                                                                  \
        return openedDescriptor(folder, path, [&] { return real(folder, path, flags, mode); });                        \
    }
#define ZN_FOPEN(name)                                                                                                 \
    FILE* name(const char* path, const char* mode) {                                                                   \
        static const auto real = next<FILE*(const char*, const char*)>(#name);                                         \
        return openedStream(path, [&] { return real(path, mode); });                                                   \
    }
ZN_OPEN(open)
ZN_OPEN(open64)
ZN_OPENAT(openat)
ZN_OPENAT(openat64)
ZN_FOPEN(fopen)
ZN_FOPEN(fopen64)

int creat(const char* path, mode_t mode) {
    return open(path, O_WRONLY | O_CREAT | O_TRUNC, mode);
}

DIR* opendir(const char* path) {
    static const auto real = next<DIR*(const char*)>("opendir");
    if (!isWatched(Call::kOpen, AT_FDCWD, path)) return real(path);
    const Disturbance disturbance(Call::kOpen);
    DIR* folder = disturbance.fails() ? nullptr : real(path);
    if (folder) watchDescriptor(dirfd(folder), true);
    return folder;
}

DIR* fdopendir(int descriptor) {
    static const auto real = next<DIR*(int)>("fdopendir");
    if (!isWatched(Call::kOpen, descriptor)) return real(descriptor);
    const Disturbance disturbance(Call::kOpen);
    return disturbance.fails() ? nullptr : real(descriptor);
}

int closedir(DIR* folder) {
    static const auto real = next<int(DIR*)>("closedir");
    return closed(dirfd(folder), [&] { return real(folder); });
}

dirent* readdir(DIR* folder) {
    static const auto real = next<dirent*(DIR*)>("readdir");
    if (!isWatched(Call::kList, dirfd(folder))) return real(folder);
    const Disturbance disturbance(Call::kList);
    return disturbance.fails() ? nullptr : real(folder);
}

dirent64* readdir64(DIR* folder) {
    static const auto real = next<dirent64*(DIR*)>("readdir64");
    if (!isWatched(Call::kList, dirfd(folder))) return real(folder);
    const Disturbance disturbance(Call::kList);
    return disturbance.fails() ? nullptr : real(folder);
}

ssize_t read(int descriptor, void* bytes, std::size_t count) {
    static const auto real = next<ssize_t(int, void*, std::size_t)>("read");
    return onBytes(Call::kRead, descriptor, count, [&](std::size_t some) { return real(descriptor, bytes, some); });
}

ssize_t pread(int descriptor, void* bytes, std::size_t count, off_t offset) {
    static const auto real = next<ssize_t(int, void*, std::size_t, off_t)>("pread");
    return onBytes(Call::kRead, descriptor, count,
                   [&](std::size_t some) { return real(descriptor, bytes, some, offset); });
}

ssize_t readv(int descriptor, const iovec* pieces, int count) {
    static const auto real = next<ssize_t(int, const iovec*, int)>("readv");
    return onPieces(Call::kRead, descriptor, pieces, count,
                    [&](const iovec* some, int number) { return real(descriptor, some, number); });
}

std::size_t fread(void* bytes, std::size_t size, std::size_t count, FILE* stream) {
    static const auto real = next<std::size_t(void*, std::size_t, std::size_t, FILE*)>("fread");
    const ssize_t got = onBytes(Call::kRead, fileno(stream), size * count,
                                [&](std::size_t some) { return static_cast<ssize_t>(real(bytes, 1, some, stream)); });
    return size == 0 || got < 0 ? 0 : static_cast<std::size_t>(got) / size;
}

ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    static const auto real = next<ssize_t(int, const void*, std::size_t)>("write");
    return onBytes(Call::kWrite, descriptor, count, [&](std::size_t some) { return real(descriptor, bytes, some); });
}

ssize_t pwrite(int descriptor, const void* bytes, std::size_t count, off_t offset) {
    static const auto real = next<ssize_t(int, const void*, std::size_t, off_t)>("pwrite");
    return onBytes(Call::kWrite, descriptor, count,
                   [&](std::size_t some) { return real(descriptor, bytes, some, offset); });
}

ssize_t writev(int descriptor, const iovec* pieces, int count) {
    static const auto real = next<ssize_t(int, const iovec*, int)>("writev");
    return onPieces(Call::kWrite, descriptor, pieces, count,
                    [&](const iovec* some, int number) { return real(descriptor, some, number); });
}

std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, FILE* stream) {
    static const auto real = next<std::size_t(const void*, std::size_t, std::size_t, FILE*)>("fwrite");
    const ssize_t put = onBytes(Call::kWrite, fileno(stream), size * count,
                                [&](std::size_t some) { return static_cast<ssize_t>(real(bytes, 1, some, stream)); });
    return size == 0 || put < 0 ? 0 : static_cast<std::size_t>(put) / size;
}

int close(int descriptor) {
    static const auto real = next<int(int)>("close");
    return closed(descriptor, [&] { return real(descriptor); });
}

int fclose(FILE* stream) {
    static const auto real = next<int(FILE*)>("fclose");
    return closed(fileno(stream), [&] { return real(stream); });
}

int rename(const char* from, const char* to) noexcept {
    static const auto real = next<int(const char*, const char*)>("rename");
    return onPath(Call::kRename, AT_FDCWD, from, to, [&] { return real(from, to); });
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept {
    static const auto real = next<int(int, const char*, int, const char*)>("renameat");
    return onPath(Call::kRename, fromFolder, from, to, [&] { return real(fromFolder, from, toFolder, to); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    static const auto real = next<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return onPath(Call::kRename, fromFolder, from, to, [&] { return real(fromFolder, from, toFolder, to, flags); });
}

int mkdir(const char* path, mode_t mode) noexcept {
    static const auto real = next<int(const char*, mode_t)>("mkdir");
    return onPath(Call::kMkdir, AT_FDCWD, path, nullptr, [&] { return real(path, mode); });
}

int mkdirat(int folder, const char* path, mode_t mode) noexcept {
    static const auto real = next<int(int, const char*, mode_t)>("mkdirat");
    return onPath(Call::kMkdir, folder, path, nullptr, [&] { return real(folder, path, mode); });
}

int fsync(int descriptor) {
    static const auto real = next<int(int)>("fsync");
    return static_cast<int>(
        onBytes(Call::kSync, descriptor, 0, [&](std::size_t) -> ssize_t { return real(descriptor); }));
}

int fdatasync(int descriptor) {
    static const auto real = next<int(int)>("fdatasync");
    return static_cast<int>(
        onBytes(Call::kSync, descriptor, 0, [&](std::size_t) -> ssize_t { return real(descriptor); }));
}

int unlink(const char* path) noexcept {
    static const auto real = next<int(const char*)>("unlink");
    return onPath(Call::kRemove, AT_FDCWD, path, nullptr, [&] { return real(path); });
}

int unlinkat(int folder, const char* path, int flags) noexcept {
    static const auto real = next<int(int, const char*, int)>("unlinkat");
    return onPath(Call::kRemove, folder, path, nullptr, [&] { return real(folder, path, flags); });
}

int rmdir(const char* path) noexcept {
    static const auto real = next<int(const char*)>("rmdir");
    return onPath(Call::kRemove, AT_FDCWD, path, nullptr, [&] { return real(path); });
}

int remove(const char* path) noexcept {
    static const auto real = next<int(const char*)>("remove");
    return onPath(Call::kRemove, AT_FDCWD, path, nullptr, [&] { return real(path); });
}

} // extern "C"
#pragma GCC visibility pop
