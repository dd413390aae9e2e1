#include "numeric/nrerror.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

TEST(Nrerror, OutsideARunWritesThreeLinesAndEndsTheProcessWithStatusOne) {
    EXPECT_EXIT(nrerror("allocation failure in vector()"), testing::ExitedWithCode(1),
                "^Numerical Recipes run-time error\\.\\.\\.\n"
                "allocation failure in vector\\(\\)\n"
                "\\.\\.\\.now exiting to system\\.\\.\\.\n$");
}

TEST(Nrerror, InsideARunUnwindsWithItsText) {
    const UnwindFatalErrors unwind;
    EXPECT_THAT([] { nrerror("some routine"); }, testing::Throws<FatalNumericError>(testing::Property(
                                                     &FatalNumericError::what, testing::StrEq("some routine"))));
}

TEST(Nrerror, EndsTheProcessAgainOnceTheRunIsOver) {
    { const UnwindFatalErrors run; }
    EXPECT_EXIT(nrerror("late"), testing::ExitedWithCode(1), "late");
}

} // namespace
} // namespace zn::test
