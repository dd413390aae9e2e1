#include "headless/result/plugin_log.h"

#include <cstdio>
#include <string>

namespace zn::headless {

void PluginLog::add(std::string_view line) {
    const std::string text(line);
    int number = 0;
    int voxels = 0;
    double percent = 0.0;
    Component found;
    if (text.find("(restarting)") != std::string::npos) {
        ++restarts_;
    } else if (std::sscanf(text.c_str(), "// Plugin> IC #: %d Number of Iterations: %d (elapsed time: %d", &number,
                           &found.iterations, &found.seconds) == 3) {
        found.restarts = restarts_;
        restarts_ = 0;
        components_.push_back(found);
    } else if (std::sscanf(text.c_str(), "// Plugin> Retained variance after dimensionality reduction: %lf",
                           &percent) == 1) {
        retained_ = percent;
    } else if (std::sscanf(text.c_str(), "// Plugin> Number of used VTC voxels: %d", &voxels) == 1) {
        voxels_ = voxels;
    }
    gaveUp_ |= text.find("Too many failures to converge") != std::string::npos;
    foundNone_ |= text.find("No components found") != std::string::npos;
    memory_ |= text.find("Working memory full") != std::string::npos;
    completed_ |= text.find("ICA Plugin completed!") != std::string::npos;
}

} // namespace zn::headless
