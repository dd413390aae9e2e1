// Expected values: scipy.stats.gamma.pdf(t, 6) - gamma.pdf(t, 16) / 6 from 0 to 32 s, and its integral by
// scipy.integrate.quad, both divided by the area, 0.8334433170882389.
#include "headless/events/haemodynamic_response.h"

#include <cmath>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

struct Reference {
    double seconds;
    double response;
    double integral;
};

constexpr Reference kReferences[] = {
    {1, 0.0036783089465825813, 0.0007129276885373024}, {5, 0.21050161252524557, 0.4607725995511658},
    {6, 0.19254410607662156, 0.6649948443522535},      {12, 0.000810435492019731, 1.1443228668788548},
    {16, -0.018661026599035957, 1.0915443736691945},   {30, -0.00020530964045070292, 1.0002574543825438}};

TEST(HaemodynamicResponse, IsADifferenceOfTwoGammaDensities) {
    for (const auto& [t, expected, integral] : kReferences) {
        EXPECT_NEAR(response(t), expected, 1e-12) << t; // quad's area is accurate to 1e-13
        EXPECT_NEAR(stepResponse(t), integral, 1e-12) << t;
    }
}

TEST(HaemodynamicResponse, IsTheSlopeOfItsIntegral) {
    constexpr double kStep = 1e-4;
    for (double t = 0.5; t < 31.5; t += 0.5) {
        const double slope = (stepResponse(t + kStep) - stepResponse(t - kStep)) / (2 * kStep);
        EXPECT_NEAR(slope, response(t), 1e-8) << t; // kStep^2 times a third derivative of at most 0.1, and rounding
    }
}

TEST(HaemodynamicResponse, LastsFromTheEventTo32Seconds) {
    for (const double t : {-1000.0, -0.1, 0.0, 32.0, 33.0, 1e9}) EXPECT_EQ(response(t), 0.0) << t;
    for (const double t : {-1000.0, -0.1, 0.0}) EXPECT_EQ(stepResponse(t), 0.0) << t;
    for (const double t : {32.0, 33.0, 1e9}) EXPECT_EQ(stepResponse(t), 1.0) << t;
    EXPECT_EQ(response(std::nan("")), 0.0);
}

} // namespace
} // namespace zn::test
