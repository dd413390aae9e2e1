#pragma once

#include <ctime>

namespace zn {

/// Wall-clock time since construction, in whole calendar seconds as the host's log shows it.
class ElapsedTime {
public:
    int seconds() const { return static_cast<int>(std::difftime(std::time(nullptr), start_)); }

private:
    std::time_t start_ = std::time(nullptr);
};

} // namespace zn
