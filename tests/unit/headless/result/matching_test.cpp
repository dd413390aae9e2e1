#include "headless/result/matching.h"

#include <algorithm>
#include <numeric>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;

// The best sum over all pairings, by enumeration; rows <= columns.
double bestSum(const std::vector<double>& value, int rows, int columns) {
    std::vector<int> order(static_cast<std::size_t>(columns));
    std::iota(order.begin(), order.end(), 0);
    double best = -1e300;
    do {
        double sum = 0.0;
        for (int row = 0; row < rows; ++row) {
            sum += value[static_cast<std::size_t>(row * columns + order[static_cast<std::size_t>(row)])];
        }
        best = std::max(best, sum);
    } while (std::next_permutation(order.begin(), order.end()));
    return best;
}

TEST(BestMatching, GivesUpTheBestPairForABetterSum) {
    // Taking the largest first gives 9 + 1; 8 + 7 is more.
    EXPECT_THAT(bestMatching({9, 8, 7, 1}, 2, 2), ElementsAre(1, 0));
}

TEST(BestMatching, LeavesTheRowThatAddsLeastUnmatched) {
    // Rows 5 1 | 6 2 | 1 4: 6 and 4 give the best sum, and the first row stays unmatched.
    EXPECT_THAT(bestMatching({5, 1, 6, 2, 1, 4}, 3, 2), ElementsAre(-1, 0, 1));
}

TEST(BestMatching, IsAsGoodAsTheBestOfAllPermutations) {
    std::uint32_t state = 11;
    for (int round = 0; round < 60; ++round) {
        const int rows = 1 + round % 5;
        const int columns = rows + round % 3;
        std::vector<double> value(static_cast<std::size_t>(rows * columns));
        for (double& v : value) v = static_cast<double>((state = state * 1664525U + 1013904223U) >> 27); // ties occur
        const auto partner = bestMatching(value, rows, columns);
        std::vector<int> sorted = partner;
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(std::adjacent_find(sorted.begin(), sorted.end()), sorted.end()) << "a column was assigned twice";
        double sum = 0.0;
        for (int row = 0; row < rows; ++row) {
            sum += value[static_cast<std::size_t>(row * columns + partner[static_cast<std::size_t>(row)])];
        }
        EXPECT_EQ(sum, bestSum(value, rows, columns));
    }
}

} // namespace
} // namespace zn::test
