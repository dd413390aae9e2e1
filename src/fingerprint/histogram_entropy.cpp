#include "fingerprint/histogram_entropy.h"

#include "fingerprint/heap_sort_ascending.h"
#include "numeric/array_owners.h"

#include <algorithm>
#include <cmath>

namespace zn {

namespace {

constexpr double kLog2OfE = 1.4426950408889634;

// Counts the values of one row, sorted in work[1..n], into its bins.
void countIntoBins(const float* work, int n, int nbins, float* bins) {
    const float width = (work[n] - work[1]) / static_cast<float>(nbins);
    float edge = work[1] + width;
    int position = 1;
    for (int b = 0; b < nbins; ++b) {
        const int first = position;
        while (position <= n && work[position] <= edge) ++position;
        bins[b] = static_cast<float>(static_cast<double>(position - first) / n);
        edge += width; // accumulated on purpose: recomputed edges would give other counts
    }
}

} // namespace

void computeHistograms(const float* const* rows, int k, int n, int nbins, float** histogram) {
    if (n < 1 || nbins < 1) return;
    const OffsetVector<float> work(1, n);
    for (int i = 0; i < k; ++i) {
        std::copy(rows[i], rows[i] + n, work.get() + 1);
        heapSortAscending(n, work.get());
        countIntoBins(work.get(), n, nbins, histogram[i]);
    }
}

void histogramEntropy(const float* const* histogram, int k, int nbins, float* entropy) {
    for (int i = 0; i < k; ++i) {
        float sum = 0;
        for (int b = 0; b < nbins; ++b) {
            const float p = histogram[i][b];
            if (p > 0) sum += p * static_cast<float>(std::log(p) * kLog2OfE);
        }
        entropy[i] = -sum;
    }
}

} // namespace zn
