#include "numeric/offset_arrays.h"

#include "numeric/nrerror.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>

namespace zn::test {
namespace {

std::string failureOf(const std::function<void()>& allocation) {
    const UnwindFatalErrors unwind;
    try {
        allocation();
    } catch (const FatalNumericError& error) {
        return error.what();
    }
    return "no failure";
}

TEST(OffsetVector, FromZeroHasExactlyItsElements) {
    float* v = vector(0, 4);
    for (int i = 0; i <= 4; ++i) v[i] = static_cast<float>(i); // AddressSanitizer watches both ends
    EXPECT_EQ(v[4], 4.0f);
    free_vector(v, 0, 4);
}

TEST(OffsetVector, FromOneIsIndexedOneToN) {
    double* v = dvector(1, 3);
    v[1] = 10;
    v[3] = 30;
    EXPECT_EQ(v[1] + v[3], 40);
    free_dvector(v, 1, 3);
}

TEST(OffsetVector, MayStartBelowZero) {
    int* v = ivector(-2, 2);
    for (int i = -2; i <= 2; ++i) v[i] = i;
    EXPECT_EQ(v[-2] * v[2], -4);
    free_ivector(v, -2, 2);
}

TEST(OffsetMatrix, IsOneContiguousRowMajorBlock) {
    float** m = matrix(0, 2, 0, 3);
    EXPECT_EQ(m[1] - m[0], 4);
    EXPECT_EQ(m[2] - m[1], 4);
    float* flat = &m[0][0];
    for (int i = 0; i < 12; ++i) flat[i] = static_cast<float>(i);
    EXPECT_EQ(m[2][3], 11.0f);
    free_matrix(m, 0, 2, 0, 3);
}

TEST(OffsetMatrix, WithLowerBoundOneStartsItsBlockAtOneOne) {
    double** m = dmatrix(1, 2, 1, 2);
    double* flat = &m[1][1];
    for (int i = 0; i < 4; ++i) flat[i] = i;
    EXPECT_EQ(m[1][2], 1);
    EXPECT_EQ(m[2][1], 2);
    free_dmatrix(m, 1, 2, 1, 2);
}

TEST(OffsetMatrix, OfOneRowWorks) {
    int** m = imatrix(7, 7, 1, 3);
    m[7][1] = 1;
    m[7][3] = 3;
    EXPECT_EQ(m[7][1] + m[7][3], 4);
    free_imatrix(m, 7, 7, 1, 3);
}

TEST(OffsetArrays, NameTheirAllocatorWhenOutOfMemory) {
    // 2^31 elements, one more than a 32-bit count holds
    EXPECT_EQ(failureOf([] { vector(0, INT_MAX); }), "allocation failure in vector()");
    EXPECT_EQ(failureOf([] { ivector(0, INT_MAX); }), "allocation failure in ivector()");
    EXPECT_EQ(failureOf([] { dvector(0, INT_MAX); }), "allocation failure in dvector()");
}

TEST(OffsetArrays, OfEveryTypeShareTheTextsOfTheFloatMatrix) {
    // The element count 65536 x 32768 = 2^31 does not fit 32 bits; the row block alone would.
    EXPECT_EQ(failureOf([] { matrix(0, 65535, 0, 32767); }), "allocation failure 2 in matrix()");
    EXPECT_EQ(failureOf([] { dmatrix(0, 65535, 0, 32767); }), "allocation failure 2 in matrix()");
    EXPECT_EQ(failureOf([] { imatrix(0, 65535, 0, 32767); }), "allocation failure 2 in matrix()");
    EXPECT_EQ(failureOf([] { matrix(0, INT_MAX, 0, 0); }), "allocation failure 1 in matrix()");
    EXPECT_EQ(failureOf([] { dmatrix(0, INT_MAX, 0, 0); }), "allocation failure 1 in matrix()");
    EXPECT_EQ(failureOf([] { imatrix(0, INT_MAX, 0, 0); }), "allocation failure 1 in matrix()");
}

} // namespace
} // namespace zn::test
