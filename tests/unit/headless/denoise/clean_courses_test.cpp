#include "headless/denoise/clean_courses.h"

#include "headless/blas/matrix_products.h"
#include "headless/denoise/explained_squares.h"
#include "headless/denoise/voxel_kinds.h"

#include <cmath>
#include <limits>
#include <numbers>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;
using testing::FloatNear;
using testing::NanSensitiveDoubleNear;
using testing::Pointwise;

constexpr int kVolumes = 6;
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// Removes (1, -1, 0, 0, 0, 0) from five volumes after a dummy scan: the course of rejected noise.
const Removal kRemoval =
    makeRemoval({kVolumes - 1, {unitCourse({1, -1, 0, 0, 0})}, {}, {}}, DenoiseMethod::kAggressive);

struct Image {
    std::vector<float> values;
    std::vector<unsigned char> mask;

    AnalysedCourses courses() { return {values.data(), static_cast<std::int64_t>(mask.size()), kVolumes, 1}; }
    Cleaning clean(int threads = 1) {
        MatrixProducts products(threads);
        const auto kinds = voxelKinds(courses(), mask, products.team());
        return cleanCourses(courses(), kinds, kRemoval, products.team());
    }
};

TEST(CleanedCourses, LoseWhatIsRemovedAndKeepTheirMean) {
    Image image{{99, 14, 10, 12, 12, 12}, {1}};
    image.clean();
    EXPECT_THAT(image.values,
                Pointwise(FloatNear(1e-5f), std::vector<float>{99.0f, 12.0f, 12.0f, 12.0f, 12.0f, 12.0f}));
}

TEST(CleanedCourses, AreCleanedOutsideTheMaskToo) {
    Image image{{99, 14, 10, 12, 12, 12, 0, 14, 10, 12, 12, 13}, {0, 1}};
    const Cleaning cleaning = image.clean();
    EXPECT_NEAR(image.values[1], 12.0f, 1e-5f);
    EXPECT_NEAR(cleaning.sdBefore[0], std::sqrt(2.0f), 1e-6f); // squares 4 + 4 over T - 1 = 4
}

TEST(CleanedCourses, ThatAreConstantOrNotFiniteStayAsTheyAre) {
    const std::vector<float> before = {1, 5, 5, 5, 5, 5, 1, 14, kNan, 12, 12, 12, kNan, 14, 10, 12, 12, 12};
    Image image{before, {1, 1, 1}};
    image.clean();
    for (std::size_t i = 0; i < 12; ++i) {
        EXPECT_TRUE(image.values[i] == before[i] || (std::isnan(image.values[i]) && std::isnan(before[i]))) << i;
    }
    EXPECT_NEAR(image.values[13], 12.0f, 1e-5f); // NaN only in the dummy scan
}

TEST(CleanedCourses, HaveTheirDvarsAndSquaresWorkedByHand) {
    Image image{{99, 14, 10, 12, 12, 12, 99, 7, 7, 7, 7, 9}, {1, 1}};
    const Cleaning cleaning = image.clean();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double root = std::numbers::sqrt2; // of the mean of 2 * 2 and 0
    EXPECT_THAT(cleaning.dvarsBefore,
                ElementsAre(NanSensitiveDoubleNear(nan, 0), testing::DoubleNear(std::sqrt(8.0), 1e-9),
                            testing::DoubleNear(root, 1e-9), testing::DoubleNear(0, 1e-9),
                            testing::DoubleNear(root, 1e-9)));
    EXPECT_NEAR(cleaning.dvarsAfter[1], 0.0, 1e-9);
    EXPECT_NEAR(cleaning.dvarsAfter[4], root, 1e-9);
    EXPECT_NEAR(cleaning.squaresBefore, 8.0 + 3.2, 1e-9); // deviations 2, -2 and 4 times -0.4, 1.6
    EXPECT_NEAR(cleaning.squaresAfter, 3.2, 1e-9);
    EXPECT_NEAR(explainedSquares(cleaning, kRemoval, 0, 1), 8.0, 1e-9);
}

TEST(CleanedCourses, AreTheSameForAnyNumberOfThreads) {
    const std::size_t voxels = 3 * 4096 + 17; // several units of voxels, the last incomplete
    Image image{std::vector<float>(voxels * kVolumes), std::vector<unsigned char>(voxels)};
    for (std::size_t i = 0; i < image.values.size(); ++i) {
        image.values[i] = static_cast<float>(std::sin(0.7 * static_cast<double>(i * i % 1009)));
    }
    for (std::size_t v = 0; v < voxels; ++v) image.mask[v] = v % 3 != 0;
    Image other = image;
    const Cleaning one = image.clean(1);
    const Cleaning three = other.clean(3);
    EXPECT_EQ(image.values, other.values);
    EXPECT_EQ(one.squaresAfter, three.squaresAfter);
    EXPECT_EQ(one.products, three.products);
}

} // namespace
} // namespace zn::test
