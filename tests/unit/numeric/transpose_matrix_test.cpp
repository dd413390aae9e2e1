#include "numeric/transpose_matrix.h"

#include "numeric/array_owners.h"

#include <gtest/gtest.h>

namespace zn::test {
namespace {

TEST(TransposeMatrix, SwapsRowsAndColumns) {
    OffsetMatrix<float> source(0, 1, 0, 2);
    for (int i = 0; i < 6; ++i) source[0][i] = static_cast<float>(i);
    OffsetMatrix<float> target(0, 2, 0, 1);
    transposeMatrix(source.get(), target.get(), 2, 3);
    for (int i = 0; i < 2; ++i) {
        for (int j = 0; j < 3; ++j) EXPECT_EQ(target[j][i], source[i][j]);
    }
    target.fill(9);
    transposeMatrix(source.get(), target.get(), 0, 3);
    EXPECT_EQ(target[0][0], 9.0f);
}

} // namespace
} // namespace zn::test
