#include "fingerprint/unit_range.h"

#include <cmath>

namespace zn {

namespace {

float smallest(const float* values, int k) {
    float m = values[0];
    for (int i = 1; i < k; ++i) {
        if (values[i] < m) m = values[i];
    }
    return m;
}

float largest(const float* values, int k) {
    float x = values[0];
    for (int i = 1; i < k; ++i) {
        if (values[i] > x) x = values[i];
    }
    return x;
}

void shiftAndScale(float* values, int k) {
    const float m = smallest(values, k);
    for (int i = 0; i < k; ++i) values[i] -= m;
    scaleToLargest(values, k, values);
}

} // namespace

void logMagnitudeUnitRange(const float* input, int k, float* output) {
    if (k < 1) return;
    for (int i = 0; i < k; ++i) {
        output[i] = std::fabs(static_cast<float>(std::log(static_cast<double>(input[i]))));
    }
    shiftAndScale(output, k);
}

void logRatioUnitRange(const float* input, int k, float* output) {
    if (k < 1) return;
    for (int i = 0; i < k; ++i) output[i] = std::fabs(input[i]);
    const double logOfSmallest = std::log(static_cast<double>(smallest(output, k)));
    for (int i = 0; i < k; ++i) {
        output[i] = static_cast<float>(std::log(static_cast<double>(output[i])) - logOfSmallest);
    }
    scaleToLargest(output, k, output);
}

void expUnitRange(const float* input, int k, float* output) {
    if (k < 1) return;
    for (int i = 0; i < k; ++i) output[i] = static_cast<float>(std::exp(static_cast<double>(input[i])));
    shiftAndScale(output, k);
}

void scaleToLargest(const float* input, int k, float* output) {
    if (k < 1) return;
    const float x = largest(input, k);
    for (int i = 0; i < k; ++i) output[i] = input[i] / x;
}

} // namespace zn
