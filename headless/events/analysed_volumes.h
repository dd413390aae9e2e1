#pragma once

namespace zn::headless {

/// Which volumes of an image are analysed, and when they were acquired.
struct AnalysedVolumes {
    int inImage = 0;
    int omitted = 0; ///< dummy scans at the beginning
    double secondsPerVolume = 0.0;

    int count() const { return inImage - omitted; }

    /// The middle of the acquisition of an analysed volume (counted from 0), in seconds from the start of the image's
    /// first volume. Its slices are spread over the repetition time; the middle suits them best as a whole, and is the
    /// time to which slices are usually shifted by slice-timing correction.
    double middleOf(int volume) const { return (volume + omitted + 0.5) * secondsPerVolume; }
};

} // namespace zn::headless
