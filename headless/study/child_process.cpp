#include "headless/study/child_process.h"

#include "headless/failure/failure.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::headless {

namespace {

int openLog(const std::filesystem::path& log) {
    const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (file >= 0) return file;
    throw Failure(ExitStatus::kOther, log.string() + " cannot be written: " + std::strerror(errno) + ".");
}

// Between fork and exec, where only calls that are safe in a signal handler are allowed.
[[noreturn]] void becomeChild(char* const* arguments, int log, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent) _exit(143); // it has ended in between
    const int nothing = open("/dev/null", O_RDONLY);
    if (nothing >= 0) dup2(nothing, STDIN_FILENO);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    execv("/proc/self/exe", arguments);
    _exit(127);
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, const std::filesystem::path& log) {
    std::vector<std::string> texts = {"znica"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    const std::vector<char*> argv = pointers(texts);
    const int file = openLog(log);
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) becomeChild(argv.data(), file, parent);
    close(file);
    if (process_ < 0) {
        throw Failure(ExitStatus::kMemory, std::string("no process can be started: ") + std::strerror(errno) +
                                               "; raise the limits on memory and processes (ulimit -u).");
    }
    descriptor_ = static_cast<int>(syscall(SYS_pidfd_open, process_, 0));
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, -1)), descriptor_(std::exchange(other.descriptor_, -1)) {}

ChildProcess::~ChildProcess() {
    end();
    if (descriptor_ >= 0) close(descriptor_);
}

std::optional<ProcessEnd> ChildProcess::ended() {
    int status = 0;
    rusage usage{};
    if (process_ <= 0 || wait4(process_, &status, WNOHANG, &usage) != process_) return std::nullopt;
    process_ = -1;
    const int code = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    return ProcessEnd{code, std::int64_t{usage.ru_maxrss} * 1024};
}

void ChildProcess::terminate() const {
    if (process_ > 0) kill(process_, SIGTERM);
}

void ChildProcess::end() {
    terminate();
    if (process_ > 0) waitpid(process_, nullptr, 0);
    process_ = -1;
}

void waitForAny(const std::vector<int>& descriptors, int milliseconds) {
    constexpr int kPolling = 50; // milliseconds
    std::vector<pollfd> waiting;
    for (const int descriptor : descriptors) {
        if (descriptor < 0) milliseconds = std::min(milliseconds, kPolling);
        if (descriptor >= 0) waiting.push_back({descriptor, POLLIN, 0});
    }
    poll(waiting.data(), waiting.size(), milliseconds);
}

} // namespace zn::headless
