#include "headless/result/plugin_log.h"

#include <charconv>
#include <cstdio>
#include <string>

namespace zn::headless {

namespace {

// The retained variance in a line that names it. The plug-in writes a point in every locale, which sscanf would not
// read in one with a comma.
std::optional<double> percentIn(const std::string& line) {
    constexpr std::string_view kWords = "Retained variance after dimensionality reduction: ";
    const std::size_t at = line.find(kWords);
    if (at == std::string::npos) return std::nullopt;
    double percent = 0.0;
    const char* digits = line.data() + at + kWords.size();
    if (std::from_chars(digits, line.data() + line.size(), percent).ec != std::errc()) return std::nullopt;
    return percent;
}

} // namespace

void PluginLog::add(std::string_view line) {
    const std::string text(line);
    int number = 0;
    int voxels = 0;
    Component found;
    if (text.find("(restarting)") != std::string::npos) {
        ++restarts_;
    } else if (std::sscanf(text.c_str(), "// Plugin> IC #: %d Number of Iterations: %d (elapsed time: %d", &number,
                           &found.iterations, &found.seconds) == 3) {
        found.restarts = restarts_;
        restarts_ = 0;
        components_.push_back(found);
    } else if (const auto percent = percentIn(text)) {
        retained_ = percent;
    } else if (std::sscanf(text.c_str(), "// Plugin> Number of used VTC voxels: %d", &voxels) == 1) {
        voxels_ = voxels;
    }
    foundNone_ |= text.find("No components found") != std::string::npos;
    memory_ |= text.find("Working memory full") != std::string::npos;
}

} // namespace zn::headless
