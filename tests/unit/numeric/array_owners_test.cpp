#include "numeric/array_owners.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace zn::test {
namespace {

// LeakSanitizer and AddressSanitizer check that nothing leaks or is freed twice.

TEST(ArrayOwners, MovingTransfersTheArray) {
    OffsetVector<float> first(1, 2);
    first[1] = 5;
    OffsetVector<float> second = std::move(first);
    EXPECT_EQ(second[1], 5.0f);
    EXPECT_FALSE(first); // NOLINT(bugprone-use-after-move): an owner moved from is empty
}

TEST(ArrayOwners, ReleaseFreesTheArrayEarly) {
    OffsetMatrix<int> m(0, 1, 0, 1);
    m.release();
    EXPECT_FALSE(m);
}

TEST(ArrayOwners, AssignmentReplacesTheArray) {
    OffsetMatrix<double> m(0, 0, 0, 0);
    m = OffsetMatrix<double>(1, 2, 1, 2);
    m.fill(3);
    EXPECT_EQ(m[2][2], 3);
}

TEST(ZeroedBlock, IsZeroAndRowMajor) {
    const ZeroedBlock block(3, 4);
    for (int i = 0; i < 12; ++i) EXPECT_EQ(block.get()[i], 0.0);
    EXPECT_EQ(block.row(2) - block.get(), 8);
}

TEST(ZeroedBlock, BeyondTheAddressSpaceIsABadAllocation) {
    const long long huge = std::numeric_limits<int>::max();
    EXPECT_THROW(ZeroedBlock(huge, huge), std::bad_alloc);
    EXPECT_THROW(ZeroedBlock(std::numeric_limits<long long>::max(), 2), std::bad_alloc);
}

} // namespace
} // namespace zn::test
