#include "fingerprint/spectral_setup.h"

#include <cmath>

namespace zn {

namespace {

constexpr double kLog2OfE = 1.4426950408889634;
constexpr int kShortestExponent = 8;

int transformLength(int segmentLength) {
    if (segmentLength < 1 << kShortestExponent) return 1 << kShortestExponent; // 0 has no logarithm
    const double exponent = std::log(static_cast<double>(segmentLength)) * kLog2OfE;
    return 1 << static_cast<int>(std::floor(exponent + 0.5));
}

} // namespace

SpectralSetup spectralSetup(int volumes, int trMs) {
    SpectralSetup setup = {};
    setup.segmentLength = static_cast<int>(volumes / 4.5);
    setup.overlap = setup.segmentLength / 2;
    setup.transformLength = transformLength(setup.segmentLength);
    setup.frequencyCount = frequencyCount(setup.transformLength);
    const int trSeconds = trMs / 1000; // on purpose in whole seconds
    setup.samplingFrequency = 1.0f / static_cast<float>(trSeconds);
    return setup;
}

int frequencyCount(int transformLength) {
    return transformLength % 2 == 0 ? transformLength / 2 + 1 : (transformLength + 1) / 2;
}

} // namespace zn
