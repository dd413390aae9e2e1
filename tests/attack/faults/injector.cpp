#include "attack/faults/injector.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zn::test {

namespace {

// Everything here is plain memory and system calls: it runs inside signal handlers and inside malloc.
struct Order {
    char call[16];
    char kind[16];
    unsigned long at;
    int number;
    int onwards;
};
Order order{};
const char* folders = nullptr;
const char* pauseStem = nullptr;
int logDescriptor = -1;
FaultRecord unrecorded{};
FaultRecord* record = &unrecorded;
std::atomic<bool> counting = false;
std::array<std::atomic<bool>, 4096> watched{};
__thread bool mainThread __attribute__((tls_model("initial-exec"))) = false;

bool isKind(const char* kind) {
    return std::strcmp(order.kind, kind) == 0;
}

int openFile(const char* path, int flags) {
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, 0600));
}

void sleepMilliseconds(long milliseconds) {
    const timespec time = {0, milliseconds * 1'000'000};
    syscall(SYS_nanosleep, &time, nullptr);
}

void pause() {
    char path[4096];
    std::snprintf(path, sizeof path, "%s.reached", pauseStem);
    syscall(SYS_close, openFile(path, O_WRONLY | O_CREAT));
    std::snprintf(path, sizeof path, "%s.go", pauseStem);
    for (int i = 0; i < 60'000 && syscall(SYS_access, path, F_OK) != 0; ++i) sleepMilliseconds(1);
}

void raiseSignal(int signal) {
    syscall(SYS_kill, syscall(SYS_getpid), signal);
}

void append(Call call, const char* first, const char* second) {
    char line[2 * 4096 + 64];
    const int length = std::snprintf(line, sizeof line, "%s\t%s%s%s\n", kCallNames[static_cast<std::size_t>(call)],
                                     first, second ? "\t" : "", second ? second : "");
    syscall(SYS_write, logDescriptor, line, static_cast<std::size_t>(length));
}

// path[size]: the absolute path of a file that may not exist.
void makeAbsolute(int folder, const char* given, char* path, std::size_t size) {
    if (given[0] == '/') {
        std::snprintf(path, size, "%s", given);
        return;
    }
    char link[64];
    char there[3072];
    std::snprintf(link, sizeof link, folder == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/%d", folder);
    const long length = syscall(SYS_readlink, link, there, sizeof there - 1);
    there[length > 0 ? length : 0] = '\0';
    std::snprintf(path, size, "%s/%s", there, given);
}

bool liesInFolders(const char* path) {
    for (const char* folder = folders; folder && *folder;) {
        const std::size_t length = std::strcspn(folder, ":");
        if (std::strncmp(path, folder, length) == 0 && (path[length] == '/' || path[length] == '\0')) return true;
        folder += length + (folder[length] == ':' ? 1 : 0);
    }
    return false;
}

void prepare() {
    const char* file = std::getenv("ZN_FAULT_RECORD");
    if (!file) return; // not meant for this process
    folders = std::getenv("ZN_FAULT_FOLDERS");
    pauseStem = std::getenv("ZN_FAULT_PAUSE");
    const int descriptor = openFile(file, O_RDWR | O_CLOEXEC);
    void* shared = mmap(nullptr, sizeof(FaultRecord), PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    syscall(SYS_close, descriptor);
    if (shared == MAP_FAILED) std::abort();
    record = static_cast<FaultRecord*>(shared);
    if (const char* log = std::getenv("ZN_FAULT_LOG")) {
        const int opened = openFile(log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC);
        logDescriptor = fcntl(opened, F_DUPFD_CLOEXEC, 1000); // the program's descriptors keep their numbers
        syscall(SYS_close, opened);
    }
    const char* text = std::getenv("ZN_FAULT");
    if (text && std::sscanf(text, "%15[^:]:%lu:%15[^:]:%d:%d", order.call, &order.at, order.kind, &order.number,
                            &order.onwards) != 5) {
        std::abort();
    }
    mainThread = true;
    counting = true;
}

int (*realMain)(int, char**, char**) = nullptr;

int countedMain(int count, char** arguments, char** environment) {
    prepare();
    return realMain(count, arguments, environment);
}

} // namespace

Disturbance::Disturbance(Call call) : hit_(false) {
    const auto index = static_cast<std::size_t>(call);
    const std::uint64_t number = ++record->calls[index];
    if (order.at == 0 || std::strcmp(order.call, kCallNames[index]) != 0) return;
    hit_ = number == order.at || (order.onwards != 0 && number > order.at);
    if (!hit_) return;
    ++record->injected;
    if (isKind("kill")) raiseSignal(SIGKILL);
    if (isKind("signal") || isKind("signal-wait")) raiseSignal(order.number);
    if (isKind("signal-wait")) sleepMilliseconds(20);
    if (isKind("pause")) pause();
    if (isKind("fail")) errno = order.number;
}

Disturbance::~Disturbance() {
    if (!hit_) return;
    const int error = errno;
    if (isKind("kill-after") || isKind("kill-half")) raiseSignal(SIGKILL);
    if (isKind("signal-after")) raiseSignal(order.number);
    errno = error;
}

bool Disturbance::fails() const {
    return hit_ && isKind("fail");
}

std::size_t Disturbance::shortened(std::size_t size) const {
    return hit_ && size > 1 && (isKind("short") || isKind("kill-half")) ? size / 2 : size;
}

bool isWatched(Call call, int folder, const char* path, const char* second) {
    if (!counting) return false;
    const int error = errno;
    char first[4096];
    char other[4096];
    makeAbsolute(folder, path, first, sizeof first);
    if (second) makeAbsolute(folder, second, other, sizeof other);
    const bool lies = liesInFolders(first);
    if (lies && logDescriptor >= 0) append(call, first, second ? other : nullptr);
    errno = error;
    return lies;
}

bool isWatched(Call call, int descriptor) {
    const auto index = static_cast<std::size_t>(descriptor);
    if (!counting || index >= watched.size() || !watched[index]) return false;
    if (logDescriptor < 0) return true;
    const int error = errno;
    char link[64];
    char path[4096];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const long length = syscall(SYS_readlink, link, path, sizeof path - 1);
    path[length > 0 ? length : 0] = '\0';
    append(call, path, nullptr);
    errno = error;
    return true;
}

void watchDescriptor(int descriptor, bool isWatchedNow) {
    const auto index = static_cast<std::size_t>(descriptor);
    if (index < watched.size()) watched[index] = isWatchedNow;
}

bool isCounting() {
    return counting;
}

bool isMainThread() {
    return mainThread;
}

} // namespace zn::test

// The C library's start of a program, which gets our main instead of the program's.
extern "C" __attribute__((visibility("default"))) int __libc_start_main(int (*main)(int, char**, char**), int count,
                                                                        char** arguments, void (*init)(),
                                                                        void (*finish)(), void (*finishLoader)(),
                                                                        void* stackEnd) {
    zn::test::realMain = main;
    const auto real = reinterpret_cast<decltype(&__libc_start_main)>(dlsym(RTLD_NEXT, "__libc_start_main"));
    return real(zn::test::countedMain, count, arguments, init, finish, finishLoader, stackEnd);
}
