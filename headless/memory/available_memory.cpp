#include "headless/memory/available_memory.h"

#include "headless/batch/batch_job.h"

#include <algorithm>
#include <fstream>
#include <string>

#include <sys/resource.h>
#include <unistd.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

std::optional<std::int64_t> availableOnMachine(const fs::path& root) {
    std::ifstream lines(root / "proc/meminfo");
    for (std::string name; lines >> name; lines.ignore(256, '\n')) {
        std::int64_t kibibytes = 0;
        if (name == "MemAvailable:" && lines >> kibibytes) return kibibytes * 1024;
    }
    return std::nullopt;
}

// The files of one version of the cgroup interface.
struct Interface {
    const char* mount;
    const char* limit;
    const char* usage;
    const char* droppable; // line of memory.stat
};
constexpr Interface kFirst = {"sys/fs/cgroup/memory", "memory.limit_in_bytes", "memory.usage_in_bytes",
                              "total_inactive_file"};
constexpr Interface kSecond = {"sys/fs/cgroup", "memory.max", "memory.current", "inactive_file"};

// Nothing if the file is missing or says "max".
std::optional<std::int64_t> numberIn(const fs::path& file) {
    std::ifstream stream(file);
    std::int64_t number = 0;
    if (stream >> number) return number;
    return std::nullopt;
}

std::int64_t statistic(const fs::path& file, const std::string& wanted) {
    std::ifstream stream(file);
    std::int64_t value = 0;
    for (std::string name; stream >> name >> value;) {
        if (name == wanted) return value;
    }
    return 0;
}

std::optional<std::int64_t> remainingIn(const fs::path& group, const Interface& files) {
    const auto limit = numberIn(group / files.limit);
    const auto usage = numberIn(group / files.usage);
    if (!limit || !usage) return std::nullopt;
    const std::int64_t held = *usage - statistic(group / "memory.stat", files.droppable);
    return std::max<std::int64_t>(*limit - held, 0);
}

// The least that is left in the group and its parents. Inside a container the group's path may be the one seen from the
// host machine; then the top of the mount is the container's group.
std::optional<std::int64_t> remainingAlong(const fs::path& root, fs::path group, const Interface& files) {
    std::optional<std::int64_t> least;
    for (group = group.relative_path();; group = group.parent_path()) {
        const auto left = remainingIn(root / files.mount / group, files);
        if (left && (!least || *left < *least)) least = left;
        if (group.empty()) return least;
    }
}

// Bytes that the control group of this process, or its tightest parent, may still use; file caches that the system can
// drop count as free. Both versions of the interface are read. Nothing without a limit.
std::optional<std::int64_t> controlGroupMemoryLeft(const fs::path& root) {
    std::ifstream lines(root / "proc/self/cgroup"); // number:controllers:/path
    for (std::string line; std::getline(lines, line);) {
        const auto first = line.find(':');
        const auto second = line.find(':', first == line.npos ? first : first + 1);
        if (second == line.npos) continue;
        const std::string controllers = "," + line.substr(first + 1, second - first - 1) + ",";
        const fs::path group = line.substr(second + 1);
        const bool memory = controllers.find(",memory,") != controllers.npos;
        if (!memory && controllers != ",,") continue;
        if (const auto left = remainingAlong(root, group, memory ? kFirst : kSecond)) return left;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::int64_t> availableMemoryBytes(const fs::path& root) {
    const auto machine = availableOnMachine(root);
    const auto group = controlGroupMemoryLeft(root);
    if (machine && group) return std::min(*machine, *group);
    return machine ? machine : group;
}

std::optional<std::int64_t> usableMemoryBytes() {
    const auto available = availableMemoryBytes();
    const auto job = batchJobMemoryBytes();
    if (available && job) return std::min(*available, *job);
    return available ? available : job;
}

std::optional<std::int64_t> addressSpaceLeftBytes() {
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return std::nullopt;
    std::int64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages; // its first number is the size of the address space
    return static_cast<std::int64_t>(limit.rlim_cur) - pages * sysconf(_SC_PAGESIZE);
}

std::int64_t peakMemoryBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return std::int64_t{usage.ru_maxrss} * 1024;
}

} // namespace zn::headless
