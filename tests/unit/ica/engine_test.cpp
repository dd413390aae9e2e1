// Covariance, whitening and reconstruction on small matrices worked by hand, with the scripted host's plain products.

#include "host/host_api.h"
#include "host/scratch_directory.h"
#include "host/scripted_host.h"
#include "ica/covariance.h"
#include "ica/reconstruction.h"
#include "ica/whitening.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace zn::test {
namespace {

class Engine : public testing::Test {
protected:
    Engine() {
        scripted() = ScriptedHost{};
        EXPECT_TRUE(bindHostApi());
        EXPECT_TRUE(bindHostMatrixProducts());
    }

    ScriptedHost& host = scripted();
    ScratchDirectory directory;
};

ZeroedBlock block(int rows, int columns, std::initializer_list<double> values) {
    ZeroedBlock result(rows, columns);
    std::copy(values.begin(), values.end(), result.get());
    return result;
}

Eigenpairs eigenpairs(std::initializer_list<double> values, std::initializer_list<double> vectors) {
    const int n = static_cast<int>(values.size());
    Eigenpairs eigen{OffsetVector<double>(1, n), OffsetMatrix<double>(1, n, 1, n)};
    std::copy(values.begin(), values.end(), &eigen.values[1]);
    std::copy(vectors.begin(), vectors.end(), &eigen.vectors[1][1]);
    return eigen;
}

TEST_F(Engine, DividesTheCovarianceByTheNumberOfVoxels) {
    const ZeroedBlock x = block(4, 2, {1, 2, -1, 0, 3, -2, -3, 0}); // columns: sums of squares 20, 8; product 2 - 6
    const auto covariance = computeCovariance(x.get(), 4, 2);
    EXPECT_EQ(covariance[1][1], 5.0);
    EXPECT_EQ(covariance[2][2], 2.0);
    EXPECT_EQ(covariance[1][2], -1.0);
    EXPECT_EQ(covariance[2][1], -1.0);
}

TEST_F(Engine, ReturnsTheEigenpairsInDescendingOrderAndReleasesTheCovariance) {
    OffsetMatrix<double> covariance(1, 2, 1, 2);
    covariance[1][1] = 1;
    covariance[2][2] = 4;
    covariance[1][2] = covariance[2][1] = 0;
    const Eigenpairs eigen = decomposeCovariance(covariance, 2, "run.vtc");
    EXPECT_EQ(eigen.values[1], 4.0);
    EXPECT_EQ(eigen.values[2], 1.0);
    EXPECT_EQ(eigen.vectors[2][1], 1.0);
    EXPECT_FALSE(covariance);
    EXPECT_EQ(platformTextOf("Covariance.txt"), "         1          0 \n         0          4 \n");
    EXPECT_EQ(contentOf("run.eig").size(), 48U);
}

TEST_F(Engine, WhitensWithOneVectorDividedByTheRootOfItsEigenvalue) {
    Eigenpairs eigen = eigenpairs({4, 1}, {0.6, -0.8, 0.8, 0.6}); // columns (0.6, 0.8) and (-0.8, 0.6)
    const ZeroedBlock x = block(3, 2, {1, 0, 0, 1, 5, 10});
    const Whitening w = whiten(x.get(), 3, 2, eigen, 1, 1);
    EXPECT_DOUBLE_EQ(w.whitening.get()[0], 0.3);
    EXPECT_DOUBLE_EQ(w.whitening.get()[1], 0.4);
    EXPECT_DOUBLE_EQ(w.dewhitening.get()[0], 1.2);
    EXPECT_DOUBLE_EQ(w.dewhitening.get()[1], 1.6);
    EXPECT_DOUBLE_EQ(w.data.get()[0], 0.3);
    EXPECT_DOUBLE_EQ(w.data.get()[1], 0.4);
    EXPECT_DOUBLE_EQ(w.data.get()[2], 0.3 * 5 + 0.4 * 10);
    EXPECT_FALSE(eigen.values) << "the eigenpairs are released";
}

TEST_F(Engine, LogsTheRetainedVarianceInSinglePrecision) {
    const ZeroedBlock x(3, 3);
    Eigenpairs eigen = eigenpairs({6, 3, 1}, {1, 0, 0, 0, 1, 0, 0, 0, 1});
    whiten(x.get(), 3, 3, eigen, 2, 3);
    // 4 of 10 is 40 %; the float nearest to it prints the same
    EXPECT_EQ(host.log().back(), "// Plugin>  Retained variance after dimensionality reduction: 40.000000 %");
    Eigenpairs thirds = eigenpairs({1, 1, 1}, {1, 0, 0, 0, 1, 0, 0, 0, 1});
    whiten(x.get(), 3, 3, thirds, 1, 1);
    // 33.333... in single precision is 33.33333206176758
    EXPECT_EQ(host.log().back(), "// Plugin>  Retained variance after dimensionality reduction: 33.333332 %");
}

TEST_F(Engine, TreatsMissingRanksAsZeroPairs) {
    const ZeroedBlock x = block(2, 2, {1, -1, -1, 1});
    Eigenpairs eigen = eigenpairs({2, 1}, {1, 0, 0, 1});
    const Whitening w = whiten(x.get(), 2, 2, eigen, 2, 3);
    EXPECT_DOUBLE_EQ(w.whitening.row(0)[1], 1.0);
    EXPECT_TRUE(std::isnan(w.whitening.row(1)[0])); // 0^-0.5 * 0
    EXPECT_EQ(w.dewhitening.row(0)[1], 0.0);
}

TEST_F(Engine, ReconstructsMapsAndTimeCoursesInSinglePrecision) {
    ZeroedBlock x = block(3, 2, {1, 2, 3, 4, -4, -6});
    // two components asked for, one found: column 1 of M and row 1 of Q stay 0 and are never read
    Separation separation{block(2, 2, {0.5, 0, 2.5, 0}), block(2, 2, {1, -1, 0, 0}), 1};
    const Components c = reconstruct(x, 3, 2, separation);
    EXPECT_EQ(c.count, 1);
    EXPECT_EQ(c.maps[0][0], -1.0f); // 1 * 1 - 1 * 2
    EXPECT_EQ(c.maps[0][1], -1.0f);
    EXPECT_EQ(c.maps[0][2], 2.0f);
    EXPECT_EQ(c.rawTimeCourses[0][0], 0.5f);
    EXPECT_EQ(c.rawTimeCourses[0][1], 2.5f);
    EXPECT_EQ(c.timeCourses[0][0], 0.0f);
    EXPECT_EQ(c.timeCourses[1][0], 1.0f);
    EXPECT_EQ(x.get(), nullptr) << "the data are released";
}

TEST_F(Engine, KeepsTheSignThatTheVectorHas) {
    ZeroedBlock x = block(3, 2, {1, 2, 3, 4, -4, -6});
    Separation separation{block(2, 1, {-0.5, -2.5}), block(1, 2, {-1, 1}), 1}; // the negative of the test above
    const Components c = reconstruct(x, 3, 2, separation);
    EXPECT_EQ(c.maps[0][0], 1.0f);
    EXPECT_EQ(c.maps[0][2], -2.0f);
    EXPECT_EQ(c.rawTimeCourses[0][0], -0.5f);
    EXPECT_EQ(c.rawTimeCourses[0][1], -2.5f);
}

TEST(ScaleColumns, RunFromZeroToOne) {
    OffsetMatrix<float> m(0, 2, 0, 1);
    const float values[3][2] = {{-2, 10}, {0, 30}, {6, 20}};
    for (int t = 0; t < 3; ++t) {
        for (int j = 0; j < 2; ++j) m[t][j] = values[t][j];
    }
    scaleColumnsToUnitRange(m.get(), 3, 2);
    const float expected[3][2] = {{0, 0}, {0.25f, 1}, {1, 0.5f}};
    for (int t = 0; t < 3; ++t) {
        for (int j = 0; j < 2; ++j) EXPECT_EQ(m[t][j], expected[t][j]);
    }
}

TEST(ScaleColumns, OfAConstantTimeCourseAreNaN) {
    OffsetMatrix<float> m(0, 1, 0, 0);
    m.fill(3.0f);
    scaleColumnsToUnitRange(m.get(), 2, 1);
    EXPECT_TRUE(std::isnan(m[0][0]));
    EXPECT_TRUE(std::isnan(m[1][0]));
}

TEST(ScaleColumns, WithoutColumnsAreLeftAlone) {
    OffsetMatrix<float> m(0, 0, 0, 0);
    m.fill(3.0f);
    scaleColumnsToUnitRange(m.get(), 1, 0);
    EXPECT_EQ(m[0][0], 3.0f);
}

} // namespace
} // namespace zn::test
