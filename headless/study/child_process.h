#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace zn::headless {

/// How a process ended and what it used.
struct ProcessEnd {
    int status = 0; ///< exit status, or 128 + the signal that ended it
    std::int64_t peakBytes = 0;
};

/// Another run of this very program. It is terminated when this process ends, however that happens.
class ChildProcess {
public:
    /// Starts it with these arguments, standard output and error going to the end of the file. Throws Failure (kMemory)
    /// when the system has no more processes, kOther when the file cannot be written.
    ChildProcess(const std::vector<std::string>& arguments, const std::filesystem::path& log);
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess();

    /// Nothing while it runs; once, how it ended.
    std::optional<ProcessEnd> ended();

    /// Asks it to end, without waiting.
    void terminate() const;

    /// Asks it to end and waits until it has.
    void end();

    /// A descriptor that becomes readable when the process ends; -1 on systems without such descriptors.
    int descriptor() const { return descriptor_; }

private:
    pid_t process_ = -1; // -1: it has ended
    int descriptor_ = -1;
};

/// Waits until one of the descriptors is readable, at most so many milliseconds.
void waitForAny(const std::vector<int>& descriptors, int milliseconds);

} // namespace zn::headless
