#include "headless/memory/available_memory.h"

#include <fstream>
#include <string>

namespace zn {

std::optional<std::int64_t> availableMemoryBytes() {
    std::ifstream lines("/proc/meminfo");
    for (std::string name; lines >> name; lines.ignore(256, '\n')) {
        std::int64_t kibibytes = 0;
        if (name == "MemAvailable:" && lines >> kibibytes) return kibibytes * 1024;
    }
    return std::nullopt;
}

} // namespace zn
