#include "headless/report/base64.h"

#include <gtest/gtest.h>

#include <string_view>

namespace zn::test {

using namespace headless;

namespace {

std::string encoded(std::string_view text) {
    return base64(std::as_bytes(std::span(text)));
}

TEST(Base64, EncodesTheExamplesOfTheStandard) { // RFC 4648, section 10
    EXPECT_EQ(encoded(""), "");
    EXPECT_EQ(encoded("f"), "Zg==");
    EXPECT_EQ(encoded("fo"), "Zm8=");
    EXPECT_EQ(encoded("foo"), "Zm9v");
    EXPECT_EQ(encoded("foob"), "Zm9vYg==");
    EXPECT_EQ(encoded("fooba"), "Zm9vYmE=");
    EXPECT_EQ(encoded("foobar"), "Zm9vYmFy");
}

TEST(Base64, UsesTheLastTwoDigitsForAllOnes) {
    EXPECT_EQ(encoded("\xfb\xff\xbf"), "+/+/");
}

} // namespace
} // namespace zn::test
