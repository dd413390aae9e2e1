#include "headless/run/run_notes.h"

#include "headless/result/frequency_bands.h"

#include <cstdio>

namespace zn::headless {

namespace {

std::string secondsText(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g s", seconds);
    return text;
}

} // namespace

void InputNotes::say(const std::string& note) {
    if (!quiet_) {
        std::printf("%s\n", note.c_str());
        std::fflush(stdout);
    }
    notes_.push_back(note);
}

void InputNotes::remark(const std::string& note) {
    say(note);
    remarks_.push_back(note);
}

std::string inputNote(const RunOptions& options, const ImageHeader& functional, const RepetitionTime& repetition) {
    std::string note = "Input: " + sizeText(functional) + " voxels, " +
                       std::to_string(functional.volumes - options.dummyScans) + " volumes";
    if (options.dummyScans > 0) note += " after the first " + std::to_string(options.dummyScans) + " left out";
    return note + ", TR " + secondsText(repetition.seconds) + " (" + repetition.source + ").";
}

std::vector<std::string> bandNotes(int millisecondsPerVolume) {
    const FrequencyBands bands = frequencyBands(millisecondsPerVolume);
    const std::string time = "TR: " + secondsText(millisecondsPerVolume / 1000.0);
    if (!bands.defined()) {
        return {time + " is below 1 s, which the plug-in counts as 0: its frequency bands mean nothing here, band 1 is "
                       "1 and the others are n/a."};
    }
    std::vector<std::string> notes;
    if (!bands.inWholeSeconds()) {
        notes.push_back(time + " is not a whole number of seconds; the plug-in counts with " +
                        std::to_string(millisecondsPerVolume / 1000) + " s in its frequency bands.");
    }
    if (bands.used < kFrequencyBands) {
        notes.push_back(time + " leaves the plug-in " + std::to_string(bands.used) + " of its " +
                        std::to_string(kFrequencyBands) + " frequency bands; the others are n/a.");
    }
    return notes;
}

} // namespace zn::headless
