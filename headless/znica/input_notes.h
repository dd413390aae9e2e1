#pragma once

#include "headless/nifti/image_header.h"
#include "headless/znica/repetition_time.h"
#include "headless/znica/run_options.h"

#include <string>
#include <vector>

namespace zn {

/// What is found out about the input before there is a log file: shown at once and kept for that file.
class InputNotes {
public:
    explicit InputNotes(bool quiet) : quiet_(quiet) {}

    void say(const std::string& note);
    const std::vector<std::string>& all() const { return notes_; }

private:
    bool quiet_; // keep them without showing
    std::vector<std::string> notes_;
};

/// "Input: 40x48x36 voxels, 150 volumes, TR 2 s (the header)." with the volumes left out.
std::string inputNote(const RunOptions& options, const ImageHeader& functional, const RepetitionTime& repetition);

} // namespace zn
