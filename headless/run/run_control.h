#pragma once

#include <cstdint>
#include <optional>

namespace CLI {
class App;
}

namespace zn::headless {

/// How a run goes about its work; none of it changes what is analysed.
struct RunControl {
    std::optional<std::uint32_t> seed; ///< nothing: a new one every time
    std::optional<int> threads;        ///< nothing: all processors
    int repeats = 1;
    bool quiet = false;
    bool verbose = false;
    bool keepPartial = false;
    bool report = true; ///< write report.html
};

/// Adds the options that fill it.
void addRunControl(CLI::App& command, RunControl& control);

} // namespace zn::headless
