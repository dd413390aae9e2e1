#pragma once

#include "numeric/array_owners.h"

#include <cmath>
#include <limits>
#include <vector>

namespace zn::test {

using Series = std::vector<float>;

inline constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// sin(0.37 j + phase) + 0.5 cos(1.3 j (1 + phase)) + 0.01 j for j = 0 .. n-1, rounded to float; easy to reproduce in
/// another language for expected values.
Series testSeries(int n, double phase);

/// Normally distributed numbers.
Series noise(int n, unsigned seed);

/// The series as a vector [1..n].
OffsetVector<float> fromOne(const Series& series);

/// The rows, all of one length n, as a matrix [0..rows-1][0..n-1].
OffsetMatrix<float> matrixOf(const std::vector<Series>& rows);

/// The columns, all of one length n, as a matrix [0..n-1][0..columns-1].
OffsetMatrix<float> matrixWithColumns(const std::vector<Series>& columns);

/// Equal values, of equal sign if zero, or both NaN.
inline bool same(float a, float b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return a == b && std::signbit(a) == std::signbit(b);
}

/// `count` rows of n numbers: noise, some of them constant, huge, or with a NaN or an infinity.
std::vector<Series> awkwardRows(int count, int n, unsigned seed);

} // namespace zn::test
