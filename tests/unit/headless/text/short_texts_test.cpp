#include "headless/text/short_texts.h"

#include "headless/text/byte_sizes.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(ShortTexts, OneIsSingular) {
    EXPECT_EQ(counted(0, "column"), "0 columns");
    EXPECT_EQ(counted(1, "column"), "1 column");
    EXPECT_EQ(counted(2, "column"), "2 columns");
}

TEST(ShortTexts, NumbersHaveAtMostSixSignificantDigits) {
    EXPECT_EQ(shortNumber(100.0), "100");
    EXPECT_EQ(shortNumber(2.0000004), "2");
    EXPECT_EQ(shortNumber(123.45678), "123.457");
    EXPECT_EQ(secondsText(0.8), "0.8 s");
}

TEST(ShortTexts, BytesAreInGibWithThreeSignificantDigits) {
    EXPECT_EQ(gibText(std::int64_t{5} << 28), "1.25 GiB");
    EXPECT_EQ(gibText(12'345'678'901), "11.5 GiB"); // 11.4978
    EXPECT_EQ(gibText(0), "0 GiB");
}

} // namespace
} // namespace zn::test
