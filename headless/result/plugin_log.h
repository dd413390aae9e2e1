#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace zn::headless {

/// What the plug-in's log lines say about the course of a run.
class PluginLog {
public:
    struct Component {
        int iterations = 0; ///< of the attempt that converged
        int restarts = 0;   ///< earlier attempts that did not converge
        int seconds = 0;    ///< of the converged attempt, whole seconds
    };

    void add(std::string_view line);

    const std::vector<Component>& components() const { return components_; }
    std::optional<double> retainedVariancePercent() const { return retained_; }
    std::optional<int> voxels() const { return voxels_; }
    bool foundNone() const { return foundNone_; }
    bool ranOutOfMemory() const { return memory_; }

private:
    std::vector<Component> components_;
    int restarts_ = 0; // of the current component
    std::optional<double> retained_;
    std::optional<int> voxels_;
    bool foundNone_ = false;
    bool memory_ = false;
};

} // namespace zn::headless
