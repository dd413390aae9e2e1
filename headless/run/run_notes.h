#pragma once

#include "headless/nifti/image_header.h"
#include "headless/run/repetition_time.h"
#include "headless/run/run_options.h"

#include <string>
#include <vector>

namespace zn::headless {

/// What is found out about the input before there is a log file: shown at once and kept for that file.
class InputNotes {
public:
    explicit InputNotes(bool quiet) : quiet_(quiet) {}

    void say(const std::string& note);
    /// The same for a note on what the reader of the result should bear in mind.
    void remark(const std::string& note);
    const std::vector<std::string>& all() const { return notes_; }
    const std::vector<std::string>& remarks() const { return remarks_; }

private:
    bool quiet_; // keep them without showing
    std::vector<std::string> notes_;
    std::vector<std::string> remarks_;
};

/// "Input: 40x48x36 voxels, 150 volumes, TR 2 s (the header)." with the volumes left out.
std::string inputNote(const RunOptions& options, const ImageHeader& functional, const RepetitionTime& repetition);

/// What the plug-in's whole seconds do to the frequency bands of this repetition time: a sentence each, none for 1 to 5
/// whole seconds.
std::vector<std::string> bandNotes(int millisecondsPerVolume);

} // namespace zn::headless
