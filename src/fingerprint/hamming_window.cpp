#include "fingerprint/hamming_window.h"

#include <cmath>

namespace zn {

namespace {

constexpr double kTwoPi = 6.2831853071794; // 14 digits instead of full double precision, as the method defines it

} // namespace

void hammingWindow(int length, float* window) {
    for (int i = 0; i < (length + 1) / 2; ++i) {
        const float x = static_cast<float>(i) / static_cast<float>(length - 1);
        const auto value = static_cast<float>(0.54 - 0.46 * std::cos(kTwoPi * static_cast<double>(x)));
        window[i] = value;
        window[length - 1 - i] = value;
    }
}

} // namespace zn
