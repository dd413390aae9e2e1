#pragma once

#include "headless/nifti/image_header.h"
#include "headless/run/repetition_time.h"
#include "headless/run/run_notes.h"

#include <string>
#include <vector>

namespace zn::headless {

/// "Input: 40x48x36 voxels, 150 volumes, TR 2 s (the header)." with the number of volumes left out.
///
///   volumes   that are analysed, the last ones of the image
std::string inputNote(const ImageHeader& functional, int volumes, const RepetitionTime& repetition);

/// One "repetition-time-disagreement" per source of the repetition time that differs from the one used.
std::vector<Remark> repetitionTimeRemarks(const RepetitionTime& repetition);

/// What the plug-in's whole seconds do to the frequency bands of this repetition time: remarks "frequency-bands"; none
/// for 1 to 5 whole seconds.
std::vector<Remark> bandRemarks(int millisecondsPerVolume);

} // namespace zn::headless
