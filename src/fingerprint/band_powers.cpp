#include "fingerprint/band_powers.h"

#include "fingerprint/unit_range.h"
#include "numeric/array_owners.h"
#include "numeric/transpose_matrix.h"

namespace zn {

namespace {

constexpr double kInnerEdges[kBands - 1] = {0.032, 0.08, 0.2, 0.4}; // of the Nyquist frequency

int bandCount(double highestFrequency) {
    if (highestFrequency > 0.1) return 5;
    if (highestFrequency >= 0.05) return 4;
    return 3;
}

// Column nearest to the edge: the first frequency above it, or the one before if that one is closer.
int edgeColumn(const float* frequencies, int f, float edge) {
    for (int column = 0; column < f; ++column) {
        if (!(frequencies[column] > edge)) continue;
        if (column > 0 && edge - frequencies[column - 1] < frequencies[column] - edge) return column - 1;
        return column;
    }
    return f - 1;
}

float sumOfColumns(const float* row, int first, int last) {
    float sum = 0;
    for (int column = first; column <= last; ++column) sum += row[column];
    return sum;
}

} // namespace

void bandPowerFractions(const float* const* spectrum, int k, int f, const float* frequencies, float samplingFrequency,
                        float** bands) {
    if (f < 1) return;
    const float nyquist = samplingFrequency * 0.5f;
    const int count = bandCount(static_cast<double>(frequencies[f - 1]));
    int last[kBands]; // column at which each band ends
    for (int b = 0; b < count - 1; ++b) {
        last[b] = edgeColumn(frequencies, f, static_cast<float>(nyquist * kInnerEdges[b]));
    }
    last[count - 1] = f - 1;

    for (int i = 0; i < k; ++i) {
        const float total = sumOfColumns(spectrum[i], 0, f - 1);
        for (int b = 0; b < count; ++b) {
            const int first = b == 0 ? 0 : last[b - 1] + 1;
            bands[i][b] = sumOfColumns(spectrum[i], first, last[b]) / total;
        }
    }
}

void scaleBandsToUnitRange(float** bands, int k, float** output) {
    for (int i = 0; i < k; ++i) scaleToLargest(bands[i], kBands, bands[i]);
    const OffsetMatrix<float> columns(0, kBands - 1, 0, k - 1);
    transposeMatrix(bands, columns.get(), k, kBands);
    for (int b = 0; b < kBands; ++b) scaleToLargest(columns[b], k, columns[b]);
    transposeMatrix(columns.get(), output, kBands, k);
}

} // namespace zn
