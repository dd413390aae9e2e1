#include "fingerprint/welch_power_spectrum.h"

#include "fingerprint/fourier_transform.h"
#include "fingerprint/hamming_window.h"
#include "fingerprint/mean_and_variance.h"
#include "fingerprint/spectral_setup.h"
#include "numeric/array_owners.h"

#include <algorithm>
#include <cmath>

namespace zn {

namespace {

constexpr float kTwoPi = 6.2831853071794f;

int segmentCount(int t, int segmentLength, int overlap) {
    const int step = segmentLength - overlap;
    return step > 0 && t >= segmentLength ? (t - overlap) / step : 0;
}

class Periodogram {
public:
    Periodogram(int transformLength, int segmentLength)
        : points_(transformLength), length_(segmentLength), fourier_(transformLength), window_(0, segmentLength - 1),
          re_(0, transformLength - 1), im_(0, transformLength - 1) {
        hammingWindow(length_, window_.get());
        for (int i = 0; i < length_; ++i) power_ += window_[i] * window_[i];
    }

    // Adds the periodogram of one segment, (segment[i] - mean) / sd, to the accumulator [0..frequencies-1].
    void add(const float* segment, float mean, float sd, float* accumulator) {
        re_.fill(0);
        im_.fill(0);
        for (int i = 0; i < length_; ++i) {
            const float standardised = (segment[i] - mean) / sd;
            re_[i % points_] += static_cast<double>(standardised * window_[i]);
        }
        fourier_.transform(re_.get(), im_.get());
        for (int f = 0; f < frequencyCount(points_); ++f) {
            accumulator[f] += static_cast<float>(re_[f] * re_[f] + im_[f] * im_[f]) / power_;
        }
    }

private:
    int points_;
    int length_;
    FourierTransform fourier_;
    OffsetVector<float> window_;
    OffsetVector<double> re_;
    OffsetVector<double> im_;
    float power_ = 0; // of the window
};

} // namespace

void welchPowerSpectrum(const float* const* courses, int k, int t, int transformLength, int segmentLength, int overlap,
                        float** spectrum, float* frequencies, float samplingFrequency) {
    const OffsetVector<float> mean(0, k - 1);
    const OffsetVector<float> variance(0, k - 1);
    rowMeansAndVariances(courses, k, t, mean.get(), variance.get());

    const int count = frequencyCount(transformLength);
    const int segments = segmentCount(t, segmentLength, overlap);
    Periodogram periodogram(transformLength, segmentLength);
    for (int i = 0; i < k; ++i) {
        std::fill(spectrum[i], spectrum[i] + count, 0.0f);
        const float* segment = courses[i];
        for (int s = 0; s < segments; ++s, segment += segmentLength - overlap) {
            periodogram.add(segment, mean[i], std::sqrt(variance[i]), spectrum[i]);
        }
        for (int f = 0; f < count; ++f) spectrum[i][f] /= static_cast<float>(segments);
    }

    const auto points = static_cast<float>(transformLength);
    for (int f = 0; f < count; ++f) {
        frequencies[f] = samplingFrequency * (static_cast<float>(f) * kTwoPi / points) / kTwoPi;
    }
}

} // namespace zn
