#include "ica/jacobi/jacobi.h"

#include "numeric/nrerror.h"
#include "unit/ica/jacobi/literal_jacobi.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numbers>
#include <vector>

namespace zn::test {
namespace {

using testing::DoubleNear;
using testing::UnorderedElementsAre;

struct Eigen {
    std::vector<double> values;
    OffsetMatrix<double> vectors; // [1..n][1..n]
    int rotations = 0;
};

using Rows = std::vector<std::vector<double>>;

OffsetMatrix<double> matrixOf(const Rows& rows) {
    const int n = static_cast<int>(rows.size());
    OffsetMatrix<double> a(1, n, 1, n);
    for (int i = 1; i <= n; ++i) {
        for (int j = 1; j <= n; ++j) a[i][j] = rows[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(j - 1)];
    }
    return a;
}

Eigen decompose(const Rows& rows) {
    const int n = static_cast<int>(rows.size());
    OffsetMatrix<double> a = matrixOf(rows);
    OffsetVector<double> d(1, n);
    Eigen eigen{{}, OffsetMatrix<double>(1, n, 1, n)};
    jacobi(a.get(), n, d.get(), eigen.vectors.get(), &eigen.rotations);
    eigen.values.assign(&d[1], &d[1] + n);
    return eigen;
}

// A covariance-like matrix of pseudo-random numbers; the same on every machine.
Rows randomCovariance(int n, std::uint64_t seed) {
    const auto size = static_cast<std::size_t>(n);
    Rows factors(size, std::vector<double>(size));
    for (auto& row : factors) {
        for (auto& value : row) {
            seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
            value = static_cast<double>(seed >> 11U) / 9007199254740992.0 - 0.5;
        }
    }
    Rows product(size, std::vector<double>(size, 0.0));
    for (std::size_t i = 0; i < size; ++i) {
        for (std::size_t j = 0; j < size; ++j) {
            for (std::size_t k = 0; k < size; ++k) product[i][j] += factors[i][k] * factors[j][k];
        }
    }
    return product;
}

TEST(Jacobi, FindsTheEigenvaluesOfATwoByTwoMatrixWorkedByHand) {
    const Eigen eigen = decompose({{2, 1}, {1, 2}}); // characteristic roots 2 - 1 and 2 + 1
    EXPECT_THAT(eigen.values, UnorderedElementsAre(DoubleNear(1, 1e-15), DoubleNear(3, 1e-15)));
}

TEST(Jacobi, LeavesADiagonalMatrixAloneAndReturnsTheIdentity) {
    const Eigen eigen = decompose({{3, 0, 0}, {0, -1, 0}, {0, 0, 2}});
    EXPECT_THAT(eigen.values, testing::ElementsAre(3, -1, 2));
    EXPECT_EQ(eigen.rotations, 0);
    for (int i = 1; i <= 3; ++i) {
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(eigen.vectors[i][j], i == j ? 1.0 : 0.0);
    }
}

TEST(Jacobi, AcceptsAOneByOneMatrix) {
    const Eigen eigen = decompose({{7}});
    EXPECT_THAT(eigen.values, testing::ElementsAre(7));
    EXPECT_EQ(eigen.vectors[1][1], 1.0);
}

TEST(Jacobi, FindsTheKnownSpectrumOfTheSecondDifferenceMatrix) {
    // Tridiagonal -1, 2, -1 of order n has the eigenvalues 2 - 2 cos(k pi / (n + 1)), k = 1..n.
    constexpr int n = 30;
    Rows rows(n, std::vector<double>(n, 0.0));
    for (std::size_t i = 0; i < n; ++i) {
        rows[i][i] = 2;
        if (i > 0) rows[i][i - 1] = rows[i - 1][i] = -1;
    }
    std::vector<double> values = decompose(rows).values;
    std::sort(values.begin(), values.end());
    for (int k = 1; k <= n; ++k) {
        EXPECT_NEAR(values[static_cast<std::size_t>(k - 1)], 2 - 2 * std::cos(k * std::numbers::pi / (n + 1)), 1e-13);
    }
}

TEST(Jacobi, GivesOrthonormalVectorsThatSatisfyTheEigenvalueEquation) {
    const Rows rows = randomCovariance(25, 1);
    const Eigen eigen = decompose(rows);
    for (int p = 1; p <= 25; ++p) {
        for (int q = 1; q <= 25; ++q) {
            double dot = 0;
            double product = 0;
            for (int k = 1; k <= 25; ++k) {
                dot += eigen.vectors[k][p] * eigen.vectors[k][q];
                product += rows[static_cast<std::size_t>(q - 1)][static_cast<std::size_t>(k - 1)] * eigen.vectors[k][p];
            }
            EXPECT_NEAR(dot, p == q ? 1 : 0, 1e-14); // rounding of several hundred rotations
            EXPECT_NEAR(product, eigen.values[static_cast<std::size_t>(p - 1)] * eigen.vectors[q][p], 1e-13);
        }
    }
}

TEST(Jacobi, EqualsTheMethodWrittenOutStepByStepBitForBit) {
    for (int n : {1, 2, 3, 4, 5, 7, 8, 9, 16, 33, 64, 101}) {
        Rows rows = randomCovariance(n, static_cast<std::uint64_t>(n));
        if (n % 2 == 1) { // some exact zeros, some tiny elements
            for (std::size_t i = 1; i < rows.size(); ++i) {
                rows[i][0] = rows[0][i] = 0.0;
                rows[i][i - 1] = rows[i - 1][i] = 1e-17;
            }
        }
        OffsetMatrix<double> a = matrixOf(rows);
        OffsetVector<double> d(1, n);
        OffsetMatrix<double> v(1, n, 1, n);
        ASSERT_TRUE(literalJacobi(a.get(), n, d.get(), v.get()));

        const Eigen eigen = decompose(rows);
        const auto size = static_cast<std::size_t>(n);
        EXPECT_EQ(std::memcmp(eigen.values.data(), &d[1], size * sizeof(double)), 0) << n;
        EXPECT_EQ(std::memcmp(&eigen.vectors[1][1], &v[1][1], size * size * sizeof(double)), 0) << n;
    }
}

TEST(Jacobi, FailsForNaN) {
    const UnwindFatalErrors unwind;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THAT(
        [&] {
            decompose({{1, nan}, {nan, 1}});
        },
        testing::Throws<FatalNumericError>(
            testing::Property(&FatalNumericError::what, testing::StrEq("Too many iterations in routine jacobi"))));
}

} // namespace
} // namespace zn::test
