#pragma once

#include <chrono>
#include <ctime>

namespace zn::bench {

/// Wall-clock and processor seconds since it was made.
class RunClock {
public:
    double seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count(); }
    double processorSeconds() const { return static_cast<double>(std::clock() - processor_) / CLOCKS_PER_SEC; }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::clock_t processor_ = std::clock();
};

} // namespace zn::bench
