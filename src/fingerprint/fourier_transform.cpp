#include "fingerprint/fourier_transform.h"

#include <cassert>
#include <cmath>
#include <numbers>
#include <utility>

namespace zn {

FourierTransform::FourierTransform(int n) : n_(n), reversed_(0, n - 1), cosine_(0, n / 2 - 1), sine_(0, n / 2 - 1) {
    assert(n >= 1 && (n & (n - 1)) == 0);
    reversed_[0] = 0;
    for (int low = 1, bit = n / 2; low < n; low *= 2, bit /= 2) { // index bit `low` becomes `bit`
        for (int i = 0; i < low; ++i) reversed_[low + i] = reversed_[i] + bit;
    }
    for (int i = 0; i < n / 2; ++i) {
        const double angle = 2 * std::numbers::pi * i / n;
        cosine_[i] = std::cos(angle);
        sine_[i] = std::sin(angle);
    }
}

void FourierTransform::transform(double* re, double* im) const {
    for (int i = 0; i < n_; ++i) {
        const int j = reversed_[i];
        if (j <= i) continue;
        std::swap(re[i], re[j]);
        std::swap(im[i], im[j]);
    }
    for (int half = 1; half < n_; half *= 2) {
        const int stride = n_ / (2 * half); // between the angles of this stage
        for (int first = 0; first < n_; first += 2 * half) {
            for (int i = 0; i < half; ++i) {
                const double c = cosine_[i * stride];
                const double s = sine_[i * stride];
                const int low = first + i;
                const int high = low + half;
                const double turnedRe = re[high] * c + im[high] * s;
                const double turnedIm = im[high] * c - re[high] * s;
                re[high] = re[low] - turnedRe;
                im[high] = im[low] - turnedIm;
                re[low] += turnedRe;
                im[low] += turnedIm;
            }
        }
    }
}

} // namespace zn
