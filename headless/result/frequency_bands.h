#pragma once

#include <string>

namespace zn::headless {

constexpr int kFrequencyBands = 5;

/// The bands of the fingerprint's power spectrum for a given repetition time.
///
/// The plug-in computes with the repetition time truncated to whole seconds. Its bands end at 0.032, 0.08, 0.2 and 0.4
/// of the Nyquist frequency and at the Nyquist frequency itself. From 6 s on there are fewer: the last band in use
/// takes the rest of the spectrum. Below one second the time is 0 and the sampling rate infinite, so everything falls
/// into the first band.
struct FrequencyBands {
    int milliseconds; ///< from volume to volume
    int used;         ///< 5; 4 from 6 s on; 3 from 11 s on; 1 below one second

    bool defined() const { return milliseconds >= 1000; }
    bool inWholeSeconds() const { return milliseconds % 1000 == 0; }

    /// "from 0.08 to 0.2 of the Nyquist frequency", for a band counted from 1 up to `used`.
    std::string range(int band) const;
};

FrequencyBands frequencyBands(int millisecondsPerVolume);

} // namespace zn::headless
