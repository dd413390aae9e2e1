#include "fingerprint/match_templates.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

namespace zn::test {
namespace {

struct Match {
    Series correlation;
    Series index;
};

Match match(const std::vector<Series>& maps, const std::vector<Series>& templates) {
    const auto k = static_cast<int>(maps.size());
    const auto v = static_cast<int>(maps.front().size());
    Match result{Series(maps.size(), -1.0f), Series(maps.size(), -1.0f)};
    const OffsetMatrix<float> regions = templates.empty() ? OffsetMatrix<float>() : matrixOf(templates);
    matchTemplates(matrixOf(maps).get(), regions.get(), static_cast<int>(templates.size()), v, k,
                   result.correlation.data(), result.index.data());
    return result;
}

TEST(MatchTemplates, FindsTheRegionOfEachMap) {
    const Match result = match({{0, 0, 0, 5, 5}, {4, 4, 0, 0, 0}}, {{1, 1, 0, 0, 0}, {0, 0, 0, 1, 1}});
    EXPECT_FLOAT_EQ(result.correlation[0], 1.0f);
    EXPECT_EQ(result.index[0], 2.0f);
    EXPECT_FLOAT_EQ(result.correlation[1], 1.0f);
    EXPECT_EQ(result.index[1], 1.0f);
}

TEST(MatchTemplates, CountsTheMagnitudeAndTakesTheLowerOfTwoEqualRegions) {
    const Match result = match({{-3, -3, 0, 0}}, {{1, 0, 0, 0}, {1, 1, 0, 0}, {1, 1, 0, 0}});
    EXPECT_FLOAT_EQ(result.correlation[0], 1.0f);
    EXPECT_EQ(result.index[0], 2.0f);
}

TEST(MatchTemplates, OfAnEmptyRegionIsZeroWithEveryMap) {
    const Match result = match({{1, 2, 3, 4}, {4, 2, 1, 0}}, {{0, 0, 0, 0}});
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(result.correlation[i], 0.0f);
        EXPECT_EQ(result.index[i], 0.0f);
    }
}

TEST(MatchTemplates, WithoutRegionsIsZero) {
    const Match result = match({{1, 2, 3, 4}}, {});
    EXPECT_EQ(result.correlation[0], 0.0f);
    EXPECT_EQ(result.index[0], 0.0f);
}

TEST(MatchTemplates, OfAMapThatIsNaNIsNoMatch) {
    const Match result = match({Series(4, kNaN)}, {{1, 1, 0, 0}});
    EXPECT_EQ(result.correlation[0], 0.0f);
    EXPECT_EQ(result.index[0], 0.0f);
}

} // namespace
} // namespace zn::test
