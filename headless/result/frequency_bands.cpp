#include "headless/result/frequency_bands.h"

namespace zn::headless {

namespace {

constexpr const char* kLimits[kFrequencyBands] = {"0", "0.032", "0.08", "0.2", "0.4"}; // lower limits / Nyquist

int usedBands(int wholeSeconds) {
    if (wholeSeconds < 1) return 1;
    return wholeSeconds <= 5 ? 5 : wholeSeconds <= 10 ? 4 : 3; // the spectrum ends at 0.1 Hz for 5 s, 0.05 Hz for 10 s
}

} // namespace

std::string FrequencyBands::range(int band) const {
    const std::string from = std::string("from ") + kLimits[band - 1];
    if (band == used) return from + " of the Nyquist frequency upwards";
    return from + " to " + kLimits[band] + " of the Nyquist frequency";
}

FrequencyBands frequencyBands(int millisecondsPerVolume) {
    return {millisecondsPerVolume, usedBands(millisecondsPerVolume / 1000)};
}

} // namespace zn::headless
