#include "headless/cli/nearest_word.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

const std::vector<std::string> kOptions = {"--components", "--columns", "--out", "--seed", "--tr"};

TEST(NearestWord, HasTheFewestDifferences) {
    EXPECT_EQ(nearestWord("--component", kOptions), "--components"); // one letter missing
    EXPECT_EQ(nearestWord("--colums", kOptions), "--columns");
    EXPECT_EQ(nearestWord("--seeed", kOptions), "--seed");
    EXPECT_EQ(nearestWord("--esed", kOptions), "--seed"); // two neighbours swapped
    EXPECT_EQ(nearestWord("--sead", kOptions), "--seed");
}

TEST(NearestWord, MayBeTheBeginningOrTheRest) {
    EXPECT_EQ(nearestWord("--comp", kOptions), "--components");
    EXPECT_EQ(nearestWord("--output", kOptions), "--out");
    EXPECT_EQ(nearestWord("--tr-seconds", kOptions), "--tr");
    EXPECT_EQ(nearestWord("-", kOptions), "");
    EXPECT_EQ(nearestWord("--", kOptions), "");
}

TEST(NearestWord, DoesNotGuessAmongSeveralThatBeginAlike) {
    EXPECT_EQ(nearestWord("--co", kOptions), "");
    EXPECT_EQ(nearestWord("--transform", kOptions), ""); // two letters in common with --tr by chance
}

TEST(NearestWord, DoesNotCountTheDashes) {
    EXPECT_EQ(nearestWord("--version", {"--epsilon"}), ""); // 3 of 7 letters differ
    EXPECT_EQ(nearestWord("-components", kOptions), "--components");
}

TEST(NearestWord, IsNothingWhenAllDifferTooMuch) {
    EXPECT_EQ(nearestWord("--wavelets", kOptions), "");
    EXPECT_EQ(nearestWord("--x", kOptions), "");
    EXPECT_EQ(nearestWord("", {}), "");
}

} // namespace
} // namespace zn::test
