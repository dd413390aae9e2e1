#include "headless/run/run_notes.h"

#include "headless/result/frequency_bands.h"
#include "headless/text/short_texts.h"

#include <cstdio>

namespace zn::headless {

void RunNotes::say(const std::string& note) {
    if (!quiet_) {
        std::printf("%s\n", note.c_str());
        std::fflush(stdout);
    }
    notes_.push_back(note);
}

void RunNotes::remark(const Remark& note) {
    say(note.text);
    remarks_.push_back(note);
}

std::string inputNote(const ImageHeader& functional, int volumes, const RepetitionTime& repetition) {
    std::string note = "Input: " + sizeText(functional) + " voxels, " + std::to_string(volumes) + " volumes";
    const int omitted = functional.volumes - volumes;
    if (omitted > 0) note += " (first " + std::to_string(omitted) + " omitted)";
    return note + ", TR " + secondsText(repetition.seconds) + " (" + repetition.source + ").";
}

std::vector<Remark> repetitionTimeRemarks(const RepetitionTime& repetition) {
    std::vector<Remark> remarks;
    for (const std::string& sentence : repetition.disagreements) {
        remarks.push_back({"repetition-time-disagreement", sentence});
    }
    if (repetition.perhapsUnset) {
        remarks.push_back({"repetition-time-without-unit",
                           "TR: the header says 1 s without a unit, which many programs write by default; check it, or "
                           "give --tr."});
    }
    return remarks;
}

std::vector<Remark> orientationRemarks(const ImageHeader& functional) {
    if (functional.oriented) return {};
    return {{"no-orientation", "Orientation: " + functional.file.string() +
                                   " has none (its sform and qform codes are 0), so left and right are unknown and "
                                   "positions are given in voxels only."}};
}

std::vector<Remark> bandRemarks(int millisecondsPerVolume) {
    constexpr char kCode[] = "frequency-bands";
    const FrequencyBands bands = frequencyBands(millisecondsPerVolume);
    const std::string time = "TR: " + secondsText(millisecondsPerVolume / 1000.0);
    if (!bands.defined()) {
        return {{kCode, time + " is below 1 s, which the plug-in truncates to 0: its frequency bands are meaningless "
                               "here; band 1 is 1 and the others are n/a."}};
    }
    std::vector<Remark> remarks;
    if (!bands.inWholeSeconds()) {
        remarks.push_back({kCode, time + " is not a whole number of seconds; the plug-in uses " +
                                      std::to_string(millisecondsPerVolume / 1000) + " s for its frequency bands."});
    }
    if (bands.used < kFrequencyBands) {
        remarks.push_back({kCode, time + " leaves the plug-in " + std::to_string(bands.used) + " of its " +
                                      std::to_string(kFrequencyBands) + " frequency bands; the others are n/a."});
    }
    return remarks;
}

} // namespace zn::headless
