#include "runs/process_memory.h"

#include <cstdlib>
#include <fstream>
#include <string>

namespace zn::bench {

namespace {

// A line such as "VmHWM:    123456 kB".
long long statusBytes(const std::string& key) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key)) return std::atoll(line.c_str() + key.size()) * 1024;
    }
    return 0;
}

} // namespace

long long residentBytes() {
    return statusBytes("VmRSS:");
}

long long peakBytes() {
    return statusBytes("VmHWM:");
}

void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5\n"; // 5: resets only the peak
}

} // namespace zn::bench
