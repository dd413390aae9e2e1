#include "ica/jacobi/sort_eigenpairs.h"

#include "numeric/array_owners.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace zn::test {
namespace {

// Sorts the values; each column of the vectors holds its value's first position, counted from 1.
std::vector<int> orderAfterSorting(std::vector<double> values) {
    const int n = static_cast<int>(values.size());
    OffsetMatrix<double> v(1, n, 1, n);
    for (int row = 1; row <= n; ++row) {
        for (int k = 1; k <= n; ++k) v[row][k] = k;
    }
    sortEigenpairs(values.data() - 1, v.get(), n);
    std::vector<int> order;
    for (int k = 1; k <= n; ++k) {
        for (int row = 1; row <= n; ++row) EXPECT_EQ(v[row][k], v[1][k]) << "columns move as a whole";
        order.push_back(static_cast<int>(v[1][k]));
    }
    EXPECT_TRUE(std::is_sorted(values.rbegin(), values.rend()));
    return order;
}

TEST(SortEigenpairs, PutsTheLargestFirstWithItsVector) {
    EXPECT_THAT(orderAfterSorting({1, 3, 2}), testing::ElementsAre(2, 3, 1));
}

TEST(SortEigenpairs, PutsTheLaterOfEqualValuesFirst) {
    // Worked by hand: {5, 5} -> the second is picked for place 1, the first is left for place 2.
    EXPECT_THAT(orderAfterSorting({5, 5}), testing::ElementsAre(2, 1));
    // {4, 4, 4}: place 1 takes the third (the first moves to place 3), place 2 then takes the one at 3, the first.
    EXPECT_THAT(orderAfterSorting({4, 4, 4}), testing::ElementsAre(3, 1, 2));
}

TEST(SortEigenpairs, LeavesASinglePairAlone) {
    EXPECT_THAT(orderAfterSorting({-1}), testing::ElementsAre(1));
}

} // namespace
} // namespace zn::test
