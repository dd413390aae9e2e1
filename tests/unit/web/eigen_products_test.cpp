#include "web/engine/blas/cblas.h"

#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

// Rows of three with room for a fourth, which is not part of the matrix: (1 2 3; 4 5 6).
const std::vector<double> kWide = {1, 2, 3, -99, 4, 5, 6, -99};
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(EigenProducts, MultipliesBlocksOfLargerMatrices) {
    const std::vector<double> b = {1, 0, 0, 1, 1, 1}; // 3 x 2
    std::vector<double> c(4, kNan);                   // does not count, because beta is 0
    cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, 2, 2, 3, 1.0, kWide.data(), 4, b.data(), 2, 0.0, c.data(),
                2);
    EXPECT_THAT(c, ElementsAre(4, 5, 10, 11));
}

TEST(EigenProducts, MultipliesTransposedMatricesAndAdds) {
    const std::vector<double> b = {1, 10, 2, 20, 3, 30}; // 3 x 2, transposed 2 x 3
    std::vector<double> c(9, 1.0);
    cblas_dgemm(CblasRowMajor, CblasTrans, CblasTrans, 3, 3, 2, 1.0, kWide.data(), 4, b.data(), 2, 1.0, c.data(), 3);
    EXPECT_THAT(c, ElementsAre(42, 83, 124, 53, 105, 157, 64, 127, 190)); // 1 + 1 * 1 + 4 * 10 and so on
}

TEST(EigenProducts, MultipliesInSinglePrecision) {
    const std::vector<float> a = {1, 2, 3, 4};
    std::vector<float> c(4);
    cblas_sgemm(CblasRowMajor, CblasNoTrans, CblasTrans, 2, 2, 2, 1.0f, a.data(), 2, a.data(), 2, 0.0f, c.data(), 2);
    EXPECT_THAT(c, ElementsAre(5, 11, 11, 25));
}

TEST(EigenProducts, FillsOnlyTheUpperTriangleOfAProductWithItself) {
    std::vector<double> c = {kNan, kNan, -1, kNan};
    cblas_dsyrk(CblasRowMajor, CblasUpper, CblasNoTrans, 2, 3, 2.0, kWide.data(), 4, 0.0, c.data(), 2);
    EXPECT_THAT(c, ElementsAre(28, 64, -1, 154)); // twice 1 + 4 + 9, 4 + 10 + 18, 16 + 25 + 36
    cblas_dsyrk(CblasRowMajor, CblasUpper, CblasTrans, 2, 2, 1.0, kWide.data(), 4, 1.0, c.data(), 2);
    EXPECT_THAT(c, ElementsAre(45, 86, -1, 183)); // plus 1 + 16, 2 + 20, 4 + 25
}

TEST(EigenProducts, MultipliesWithAVector) {
    const std::vector<double> x = {1, 2, 3};
    std::vector<double> y(2, kNan);
    cblas_dgemv(CblasRowMajor, CblasNoTrans, 2, 3, 1.0, kWide.data(), 4, x.data(), 1, 0.0, y.data(), 1);
    EXPECT_THAT(y, ElementsAre(14, 32));
    std::vector<double> z(3, 1.0);
    cblas_dgemv(CblasRowMajor, CblasTrans, 2, 3, 1.0, kWide.data(), 4, x.data(), 1, 1.0, z.data(), 1);
    EXPECT_THAT(z, ElementsAre(10, 13, 16)); // 1 + 1 * 1 + 2 * 4 and so on
}

} // namespace
