// Expected values: the response of haemodynamic_response_test.cpp integrated over every event by scipy.integrate.quad.
#include "headless/events/event_predictor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;
using testing::FloatNear;

constexpr float kTolerance = 2e-7f; // single precision

TEST(EventPredictor, IsTheConvolutionOfABlockWithTheResponseAtTheMiddleOfEachVolume) {
    // From 3 s to 7 s; the first analysed volume is the second of the image: middles at 3, 5, 7, ... s.
    EXPECT_THAT(predictorOf({{3.0, 4.0}}, {9, 1, 2.0}),
                ElementsAre(FloatNear(0.0f, kTolerance), FloatNear(0.019873707f, kTolerance),
                            FloatNear(0.257808531f, kTolerance), FloatNear(0.645121137f, kTolerance),
                            FloatNear(0.710934137f, kTolerance), FloatNear(0.444607474f, kTolerance),
                            FloatNear(0.175580199f, kTolerance), FloatNear(0.017482453f, kTolerance)));
}

TEST(EventPredictor, BriefEventsContributeTheResponseItselfAlsoFromBeforeTheFirstVolume) {
    EXPECT_THAT(predictorOf({{-1.0, 0.0}, {6.5, 0.0}}, {6, 0, 2.0}),
                ElementsAre(FloatNear(0.043301575f, kTolerance), FloatNear(0.187524385f, kTolerance),
                            FloatNear(0.192544106f, kTolerance), FloatNear(0.108294446f, kTolerance),
                            FloatNear(0.118601782f, kTolerance), FloatNear(0.20576494f, kTolerance)));
}

TEST(EventPredictor, DummyScansShiftTheVolumesNotTheEvents) {
    const std::vector<Event> events = {{4.0, 2.0}, {15.0, 0.0}};
    const auto all = predictorOf(events, {20, 0, 1.5});
    const auto later = predictorOf(events, {20, 5, 1.5});
    EXPECT_EQ(later, std::vector<float>(all.begin() + 5, all.end()));
}

TEST(EventPredictor, ALongStateReachesOne) {
    EXPECT_FLOAT_EQ(predictorOf({{0.0, 100.0}}, {40, 0, 2.0}).back(), 1.0f);
}

} // namespace
} // namespace zn::test
