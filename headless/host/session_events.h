#pragma once

#include <string_view>

namespace zn::headless {

class VolumeMaps;

/// What a run tells its surroundings while it goes on. Called on the thread that runs the plug-in.
class SessionEvents {
public:
    virtual ~SessionEvents() = default;

    /// A line for the log: the plug-in's, or the host's own notes.
    virtual void logLine(std::string_view line) = 0;
    /// The plug-in had a matrix, transposed or not, multiplied with a vector: what an iteration consists of.
    virtual void vectorProduct(bool transposed) { (void)transposed; }
    /// A message box: the user should see it.
    virtual void message(std::string_view text) = 0;
    /// The maps are complete; the plug-in wants them kept under this name.
    virtual void saveMaps(const VolumeMaps& maps, std::string_view name) = 0;
    /// Memory for the maps is short. The plug-in would write through whatever it is given, so this must not return.
    [[noreturn]] virtual void outOfMemory() = 0;
};

} // namespace zn::headless
