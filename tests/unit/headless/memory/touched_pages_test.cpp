#include "headless/memory/touched_pages.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(TouchedBytes, OfSmallElementsCountEachPageOnce) {
    std::vector<unsigned char> written(40); // four elements per page
    written[0] = written[1] = written[3] = written[4] = written[39] = 1;
    EXPECT_EQ(touchedBytes(written, 1024), 3 * 4096);
}

TEST(TouchedBytes, OfAnElementAcrossTheEndOfAPageAreBothPages) {
    EXPECT_EQ(touchedBytes({0, 1, 0}, 3000), 2 * 4096); // bytes 3000 to 5999
    EXPECT_EQ(touchedBytes({0, 1, 1}, 3000), 3 * 4096); // to 8999
}

TEST(TouchedBytes, OfElementsLargerThanAPageAreAllTheirPages) {
    EXPECT_EQ(touchedBytes({1, 0, 1}, 2 * 4096), 4 * 4096);
}

TEST(TouchedBytes, OfNothingAreNone) {
    EXPECT_EQ(touchedBytes({0, 0}, 100), 0);
}

} // namespace
} // namespace zn::test
