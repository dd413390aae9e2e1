#include "fingerprint/heap_sort_ascending.h"

#include "unit/fingerprint/literal_heap_sort.h"
#include "unit/fingerprint/test_series.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace zn::test {
namespace {

using testing::ElementsAreArray;

// Sorts between two guard values, which must not change.
Series sorted(const Series& series) {
    Series work = series;
    work.insert(work.begin(), -77.0f);
    work.push_back(-78.0f);
    heapSortAscending(static_cast<int>(series.size()), work.data());
    EXPECT_EQ(work.front(), -77.0f);
    EXPECT_EQ(work.back(), -78.0f);
    return {work.begin() + 1, work.end() - 1};
}

Series bySorting(Series series) {
    std::sort(series.begin(), series.end());
    return series;
}

std::vector<std::uint32_t> bitsOf(const Series& series) {
    std::vector<std::uint32_t> bits(series.size());
    std::transform(series.begin(), series.end(), bits.begin(),
                   [](float value) { return std::bit_cast<std::uint32_t>(value); });
    return bits;
}

// Every n-th value from `first` on becomes `value`.
Series with(Series series, std::size_t first, std::size_t n, float value) {
    for (std::size_t i = first; i < series.size(); i += n) series[i] = value;
    return series;
}

TEST(HeapSortAscending, GivesTheBytesOfTheLiteralFormForAnyValues) {
    const float kTiny = std::numeric_limits<float>::denorm_min();
    for (const int n : {2, 5, 21, 999, 1000, 1001, 4096, 20001}) {
        const Series plain = noise(n, static_cast<unsigned>(n));
        const Series zeros = with(plain, 1, 5, 0.0f);
        const Series signedZeros = with(zeros, 0, 3, -0.0f);
        const Series edges = with(with(with(plain, 0, 4, kInfinity), 1, 6, -kInfinity), 2, 9, -kTiny);
        const Series ties = with(with(plain, 0, 2, -1.5f), 1, 2, 2.5f);
        for (const Series& series :
             {plain, zeros, signedZeros, with(plain, 0, 3, -0.0f), edges, ties, with(plain, 1, 7, kNaN),
              with(signedZeros, 1, 7, -kNaN), Series(plain.size(), 3.0f)}) {
            ASSERT_EQ(bitsOf(sorted(series)), bitsOf(literalHeapSort(series))) << n;
        }
    }
}

TEST(HeapSortAscending, LeavesFewerThanTwoValuesAsTheyAre) {
    EXPECT_TRUE(sorted({}).empty());
    EXPECT_THAT(sorted({3}), ElementsAreArray({3.0f}));
}

TEST(HeapSortAscending, SortsEveryLengthUpToThreeHundred) {
    for (int n = 2; n <= 300; ++n) {
        const Series series = noise(n, static_cast<unsigned>(n));
        EXPECT_THAT(sorted(series), ElementsAreArray(bySorting(series))) << n;
    }
}

TEST(HeapSortAscending, SortsWhatIsSortedAlreadyOrBackwards) {
    Series series = bySorting(noise(1000, 1));
    const Series ascending = series;
    EXPECT_EQ(sorted(series), ascending);
    std::reverse(series.begin(), series.end());
    EXPECT_EQ(sorted(series), ascending);
}

TEST(HeapSortAscending, SortsTiesAndInfinities) {
    Series series = noise(5000, 2);
    for (float& value : series) value = std::round(value * 2);
    series[10] = kInfinity;
    series[20] = -kInfinity;
    EXPECT_EQ(sorted(series), bySorting(series));
}

TEST(HeapSortAscending, KeepsEveryValueWhenSomeAreNaN) {
    Series series = noise(1000, 3);
    for (std::size_t i = 0; i < series.size(); i += 7) series[i] = kNaN;
    Series result = sorted(series);
    const auto isNumber = [](float value) { return !std::isnan(value); };
    const auto resultEnd = std::partition(result.begin(), result.end(), isNumber);
    const auto seriesEnd = std::partition(series.begin(), series.end(), isNumber);
    EXPECT_EQ(bySorting(Series(result.begin(), resultEnd)), bySorting(Series(series.begin(), seriesEnd)));
}

TEST(HeapSortAscending, EndsWhenNothingIsANumber) {
    const Series result = sorted(Series(100, kNaN));
    EXPECT_TRUE(std::all_of(result.begin(), result.end(), [](float value) { return std::isnan(value); }));
}

} // namespace
} // namespace zn::test
