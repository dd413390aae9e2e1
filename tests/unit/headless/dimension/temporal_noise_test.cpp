#include "headless/dimension/temporal_noise.h"

#include <gmock/gmock.h>

namespace zn::test {

using namespace headless;
using testing::DoubleNear;
using testing::ElementsAre;

namespace {

TEST(AutoregressiveCorrelation, OfTheFirstOrderDecaysGeometrically) {
    EXPECT_THAT(autoregressiveCorrelation({4.0, 2.0}, 5), ElementsAre(1.0, 0.5, 0.25, 0.125, 0.0625));
}

TEST(AutoregressiveCorrelation, OfTheSecondOrderFollowsItsRecursion) {
    // Weights by the Yule-Walker equations: 0.5 (1 - 0.4) / (1 - 0.25) = 0.4 and (0.4 - 0.25) / (1 - 0.25) = 0.2.
    EXPECT_THAT(autoregressiveCorrelation({1.0, 0.5, 0.4}, 5),
                ElementsAre(1.0, 0.5, 0.4, DoubleNear(0.26, 1e-15), DoubleNear(0.184, 1e-15)));
}

TEST(AutoregressiveCorrelation, LeavesOutWhatNoStationaryProcessHas) {
    EXPECT_THAT(autoregressiveCorrelation({1.0, 0.5, -1.2}, 4), ElementsAre(1.0, 0.5, 0.25, 0.125));
    EXPECT_THAT(autoregressiveCorrelation({1.0, 1.5}, 3), ElementsAre(1.0, 0.0, 0.0));
    EXPECT_THAT(autoregressiveCorrelation({1.0}, 3), ElementsAre(1.0, 0.0, 0.0));
}

TEST(AutoregressiveCorrelation, CanBeShorterThanTheAutocovariances) {
    EXPECT_THAT(autoregressiveCorrelation({1.0, 0.5, 0.4}, 2), ElementsAre(1.0, 0.5));
}

} // namespace
} // namespace zn::test
