#include "headless/memory/available_memory.h"

#include "headless/memory/control_group.h"

#include <algorithm>
#include <fstream>
#include <string>

namespace zn::headless {

namespace {

std::optional<std::int64_t> availableOfMachine(const std::filesystem::path& root) {
    std::ifstream lines(root / "proc/meminfo");
    for (std::string name; lines >> name; lines.ignore(256, '\n')) {
        std::int64_t kibibytes = 0;
        if (name == "MemAvailable:" && lines >> kibibytes) return kibibytes * 1024;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::int64_t> availableMemoryBytes(const std::filesystem::path& root) {
    const auto machine = availableOfMachine(root);
    const auto group = controlGroupMemoryLeft(root);
    if (machine && group) return std::min(*machine, *group);
    return machine ? machine : group;
}

} // namespace zn::headless
