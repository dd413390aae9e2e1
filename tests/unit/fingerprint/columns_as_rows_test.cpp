#include "fingerprint/columns_as_rows.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

namespace zn {
namespace {

TEST(ColumnsAsRows, TurnsTheMatrix) {
    const OffsetMatrix<float> turned = columnsAsRows(matrixOf({{1, 2, 3}, {4, 5, 6}}).get(), 2, 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(turned[i][0], static_cast<float>(i + 1));
        EXPECT_EQ(turned[i][1], static_cast<float>(i + 4));
    }
}

} // namespace
} // namespace zn
