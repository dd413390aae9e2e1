#include "unit/fingerprint/test_series.h"

#include "numeric/transpose_matrix.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <random>

namespace zn::test {

Series testSeries(int n, double phase) {
    Series series;
    for (int j = 0; j < n; ++j) {
        series.push_back(
            static_cast<float>(std::sin(0.37 * j + phase) + 0.5 * std::cos(1.3 * j * (1 + phase)) + 0.01 * j));
    }
    return series;
}

Series noise(int n, unsigned seed) {
    std::mt19937 generator(seed);
    std::normal_distribution<float> normal;
    Series series(static_cast<std::size_t>(n));
    std::generate(series.begin(), series.end(), [&] { return normal(generator); });
    return series;
}

OffsetVector<float> fromOne(const Series& series) {
    OffsetVector<float> vector(1, static_cast<int>(series.size()));
    std::copy(series.begin(), series.end(), vector.get() + 1);
    return vector;
}

OffsetMatrix<float> matrixOf(const std::vector<Series>& rows) {
    const auto columns = static_cast<int>(rows.front().size());
    OffsetMatrix<float> matrix(0, static_cast<int>(rows.size()) - 1, 0, columns - 1);
    for (std::size_t i = 0; i < rows.size(); ++i)
        std::copy(rows[i].begin(), rows[i].end(), matrix[static_cast<int>(i)]);
    return matrix;
}

OffsetMatrix<float> matrixWithColumns(const std::vector<Series>& columns) {
    const auto n = static_cast<int>(columns.front().size());
    const auto count = static_cast<int>(columns.size());
    OffsetMatrix<float> matrix(0, n - 1, 0, count - 1);
    transposeMatrix(matrixOf(columns).get(), matrix.get(), count, n);
    return matrix;
}

std::vector<Series> awkwardRows(int count, int n, unsigned seed) {
    std::vector<Series> rows;
    for (int i = 0; i < count; ++i) {
        Series row = noise(n, seed + static_cast<unsigned>(i));
        const auto middle = row.begin() + n / 2;
        if (i % 11 == 1) std::fill(row.begin(), row.end(), 0.1f);
        if (i % 11 == 3) *middle = kNaN;
        if (i % 11 == 5) *middle = kInfinity;
        if (i % 11 == 7) std::transform(row.begin(), row.end(), row.begin(), [](float x) { return x * 1e25f; });
        rows.push_back(row);
    }
    return rows;
}

} // namespace zn::test
