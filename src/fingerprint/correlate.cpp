#include "fingerprint/correlate.h"

#include "fingerprint/mean_and_variance.h"
#include "numeric/array_owners.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace zn {

namespace {

constexpr int kWidth = 16; // y rows side by side
constexpr int kTile = 512; // columns at a time: a tile of kWidth rows stays in the first-level cache

using Four = float __attribute__((vector_size(4 * sizeof(float)))); // four lanes of the x86-64 baseline

struct RowSums {
    RowSums(const float* const* rows, int k, int n) : mean(0, k - 1), squares(0, k - 1) {
        rowMeansAndSquares(rows, k, n, mean.get(), squares.get());
    }
    OffsetVector<float> mean;
    OffsetVector<float> squares;
};

float pearson(float products, float xSquares, float ySquares) {
    const float d = std::sqrt(xSquares * ySquares);
    return d > 0 ? products / d : 0.0f;
}

// tile[j * kWidth + lane] = deviation of y row `lane` at column j; lanes from `rows` on are 0.
void fillTile(const float* const* y, const float* mean, int rows, int from, int columns, float* tile) {
    for (int j = 0; j < columns; ++j, tile += kWidth) {
        for (int lane = 0; lane < kWidth; ++lane) tile[lane] = lane < rows ? y[lane][from + j] - mean[lane] : 0.0f;
    }
}

// One lane per y row. Written with vectors because g++ 12 does not vectorise a loop over the lanes.
void addProducts(const float* x, float mean, int columns, const float* tile, float* products) {
    Four sum[kWidth / 4];
    std::memcpy(sum, products, sizeof sum);
    for (int j = 0; j < columns; ++j, tile += kWidth) {
        const float d = x[j] - mean;
        Four lanes[kWidth / 4];
        std::memcpy(lanes, tile, sizeof lanes);
        for (int q = 0; q < kWidth / 4; ++q) sum[q] += Four{d, d, d, d} * lanes[q];
    }
    std::memcpy(products, sum, sizeof sum);
}

} // namespace

void correlate(const float* x, const float* y, int n, float* r) {
    const float* xRow = x + 1;
    const float* yRow = y + 1;
    float xMean = 0;
    float yMean = 0;
    float xSquares = 0;
    float ySquares = 0;
    rowMeansAndSquares(&xRow, 1, n, &xMean, &xSquares);
    rowMeansAndSquares(&yRow, 1, n, &yMean, &ySquares);
    float products = 0;
    for (int i = 0; i < n; ++i) products += (xRow[i] - xMean) * (yRow[i] - yMean);
    *r = pearson(products, xSquares, ySquares);
}

void correlateRows(const float* const* x, int k, const float* const* y, int m, int n, float** r) {
    const RowSums xSums(x, k, n);
    const RowSums ySums(y, m, n);
    const OffsetVector<float> tile(0, kTile * kWidth - 1);
    OffsetMatrix<float> products(0, k - 1, 0, kWidth - 1);

    for (int first = 0; first < m; first += kWidth) {
        const int rows = std::min(kWidth, m - first);
        products.fill(0);
        for (int from = 0; from < n; from += kTile) {
            const int columns = std::min(kTile, n - from);
            fillTile(y + first, ySums.mean.get() + first, rows, from, columns, tile.get());
            for (int i = 0; i < k; ++i) addProducts(x[i] + from, xSums.mean[i], columns, tile.get(), products[i]);
        }
        for (int i = 0; i < k; ++i) {
            for (int lane = 0; lane < rows; ++lane) {
                r[i][first + lane] = pearson(products[i][lane], xSums.squares[i], ySums.squares[first + lane]);
            }
        }
    }
}

} // namespace zn
