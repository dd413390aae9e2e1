#include "headless/znica/input_notes.h"

#include <cstdio>

namespace zn {

void InputNotes::say(const std::string& note) {
    if (!quiet_) {
        std::printf("%s\n", note.c_str());
        std::fflush(stdout);
    }
    notes_.push_back(note);
}

std::string inputNote(const RunOptions& options, const ImageHeader& functional, const RepetitionTime& repetition) {
    std::string note = "Input: " + sizeText(functional) + " voxels, " +
                       std::to_string(functional.volumes - options.dummyScans) + " volumes";
    if (options.dummyScans > 0) note += " after the first " + std::to_string(options.dummyScans) + " left out";
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.6g", repetition.seconds);
    return note + ", TR " + seconds + " s (" + repetition.source + ").";
}

} // namespace zn
