#include "fingerprint/mean_and_variance.h"

#include "fingerprint/lane_groups.h"

namespace zn {

namespace {

template <int lanes> void means(const float* const* rows, int n, float* mean) {
    float sum[lanes] = {};
    for (int j = 0; j < n; ++j) {
        for (int lane = 0; lane < lanes; ++lane) sum[lane] += rows[lane][j];
    }
    for (int lane = 0; lane < lanes; ++lane) mean[lane] = sum[lane] / static_cast<float>(n);
}

// Sums of the deviations from the mean, not exactly 0 because the mean is rounded, and of their squares.
template <int lanes> void deviations(const float* const* rows, int n, const float* mean, float* sums, float* squares) {
    float s[lanes] = {};
    float q[lanes] = {};
    for (int j = 0; j < n; ++j) {
        for (int lane = 0; lane < lanes; ++lane) {
            const float d = rows[lane][j] - mean[lane];
            s[lane] += d;
            q[lane] += d * d;
        }
    }
    for (int lane = 0; lane < lanes; ++lane) {
        sums[lane] = s[lane];
        squares[lane] = q[lane];
    }
}

float correctedVariance(float sum, float squares, int n) {
    return (squares - sum * sum / static_cast<float>(n)) / static_cast<float>(n - 1);
}

} // namespace

void meanAndVariance(const float* values, int n, float* mean, float* variance) {
    const float* row = values + 1;
    float sum = 0;
    float squares = 0;
    means<1>(&row, n, mean);
    deviations<1>(&row, n, mean, &sum, &squares);
    *variance = correctedVariance(sum, squares, n);
}

void rowMeansAndVariances(const float* const* rows, int k, int n, float* mean, float* variance) {
    forLaneGroups(k, [&](auto lanes, int first) {
        constexpr int count = decltype(lanes)::value;
        float sums[count];
        float squares[count];
        means<count>(rows + first, n, mean + first);
        deviations<count>(rows + first, n, mean + first, sums, squares);
        for (int lane = 0; lane < count; ++lane) {
            variance[first + lane] = correctedVariance(sums[lane], squares[lane], n);
        }
    });
}

void rowMeansAndSquares(const float* const* rows, int k, int n, float* mean, float* squares) {
    forLaneGroups(k, [&](auto lanes, int first) {
        constexpr int count = decltype(lanes)::value;
        float sums[count];
        means<count>(rows + first, n, mean + first);
        deviations<count>(rows + first, n, mean + first, sums, squares + first);
    });
}

} // namespace zn
