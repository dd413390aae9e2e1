#pragma once

#include "headless/nifti/image_header.h"
#include "headless/run/repetition_time.h"

#include <string>
#include <vector>

namespace zn::headless {

/// A sentence that the reader of a result should be aware of, with a code by which programs recognise it.
struct Remark {
    std::string code;
    std::string text;
};

/// Notes on the input made before the log file exists: printed at once and kept for that file.
class RunNotes {
public:
    explicit RunNotes(bool quiet) : quiet_(quiet) {}

    void say(const std::string& note);
    /// The same for a note that also belongs in the record of the run.
    void remark(const Remark& note);
    const std::vector<std::string>& all() const { return notes_; }
    const std::vector<Remark>& remarks() const { return remarks_; }

private:
    bool quiet_; // keep them without printing
    std::vector<std::string> notes_;
    std::vector<Remark> remarks_;
};

/// "Input: 40x48x36 voxels, 150 volumes, TR 2 s (the header)." with the number of omitted volumes, if any.
///
///   volumes   number of volumes analysed, the last ones of the image
std::string inputNote(const ImageHeader& functional, int volumes, const RepetitionTime& repetition);

/// One "repetition-time-disagreement" per source of the repetition time that differs from the one used, and a
/// "repetition-time-without-unit" for one that may never have been set.
std::vector<Remark> repetitionTimeRemarks(const RepetitionTime& repetition);

/// A "no-orientation" remark for an image without sform and qform.
std::vector<Remark> orientationRemarks(const ImageHeader& functional);

/// How truncation to whole seconds affects the plug-in's frequency bands for this repetition time: remarks
/// "frequency-bands"; none for 1 to 5 whole seconds.
std::vector<Remark> bandRemarks(int millisecondsPerVolume);

} // namespace zn::headless
