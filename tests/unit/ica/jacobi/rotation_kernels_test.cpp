#include "ica/jacobi/rotation_kernels.h"

#include "unit/kernel_forms.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

namespace zn::test {
namespace {

constexpr int kColumns = 23; // 0 .. 22, not a multiple of any number of lanes

// Some rotations of one pass.
std::vector<PlaneRotation> someRotations() {
    std::vector<PlaneRotation> rotations;
    for (int q : {2, 3, 7, 15, 22}) {
        const double angle = 0.4 - 0.1 * q;
        rotations.push_back({std::sin(angle), std::tan(angle / 2), q});
    }
    return rotations;
}

// The rows of a tile and their elements p.
struct TileRows {
    std::vector<std::vector<double>> elements;
    std::vector<double*> handles;
    std::vector<double> shared;

    explicit TileRows(unsigned seed) : elements(kTileRows, std::vector<double>(kColumns)), shared(kTileRows) {
        std::mt19937 random(seed);
        const auto number = [&] { return static_cast<double>(random()) / 4294967296.0 - 0.5; };
        for (auto& row : elements) {
            for (double& value : row) value = number();
            handles.push_back(row.data());
        }
        for (double& value : shared) value = number();
    }
};

// Rotates one pair of elements.
void rotatePair(const PlaneRotation& r, double& x, double& y) {
    const double g = x;
    const double h = y;
    x = g - r.s * (h + g * r.tau);
    y = h + r.s * (g - h * r.tau);
}

TileRows plainlyRotated(TileRows rows) {
    for (const auto& r : someRotations()) {
        for (std::size_t i = 0; i < rows.elements.size(); ++i) {
            rotatePair(r, rows.shared[i], rows.elements[i][static_cast<std::size_t>(r.q)]);
        }
    }
    return rows;
}

void expectSameBits(const TileRows& a, const TileRows& b) {
    EXPECT_EQ(std::memcmp(a.shared.data(), b.shared.data(), a.shared.size() * sizeof(double)), 0);
    for (std::size_t i = 0; i < a.elements.size(); ++i) {
        EXPECT_EQ(std::memcmp(a.elements[i].data(), b.elements[i].data(), kColumns * sizeof(double)), 0) << "row " << i;
    }
}

template <class Form> class RotationKernels : public KernelForm<Form> {};
TYPED_TEST_SUITE(RotationKernels, KernelForms, NameOfKernelForm);

TYPED_TEST(RotationKernels, OfATileEqualSequentialRotations) {
    constexpr int lanes = TypeParam::value;
    TileRows rows(11);
    const TileRows expected = plainlyRotated(TileRows(11));
    const auto rotations = someRotations();
    std::vector<TileColumn> tile(kColumns - 2); // columns 2 .. 22
    fillTileKernel<lanes>(rows.handles.data(), 2, kColumns - 1, tile.data());
    rotateTileKernel<lanes>(rotations.data(), rotations.data() + rotations.size(), rows.shared.data(), tile.data(), 2);
    emptyTileKernel<lanes>(tile.data(), 2, kColumns - 1, rows.handles.data());
    expectSameBits(rows, expected);
}

TYPED_TEST(RotationKernels, OfTwoTilesEqualSequentialRotations) {
    constexpr int lanes = TypeParam::value;
    TileRows rows[] = {TileRows(11), TileRows(12)};
    const TileRows expected[] = {plainlyRotated(TileRows(11)), plainlyRotated(TileRows(12))};
    const auto rotations = someRotations();
    std::vector<TileColumn> tiles[] = {std::vector<TileColumn>(kColumns), std::vector<TileColumn>(kColumns)};
    TileColumn* const tileOf[] = {tiles[0].data(), tiles[1].data()};
    double* const shared[] = {rows[0].shared.data(), rows[1].shared.data()};
    for (int t = 0; t < 2; ++t) fillTileKernel<lanes>(rows[t].handles.data(), 2, kColumns - 1, tileOf[t] + 2);
    rotateTwoTilesKernel<lanes>(rotations.data(), rotations.data() + rotations.size(), shared, tileOf);
    for (int t = 0; t < 2; ++t) emptyTileKernel<lanes>(tileOf[t] + 2, 2, kColumns - 1, rows[t].handles.data());
    for (int t = 0; t < 2; ++t) expectSameBits(rows[t], expected[t]);
}

TYPED_TEST(RotationKernels, OfAStretchEqualSequentialRotations) {
    TileRows rows(13);
    TileRows expected(13);
    const PlaneRotation rotation = someRotations()[0];
    for (std::size_t j = 3; j <= kColumns - 2; ++j)
        rotatePair(rotation, expected.elements[0][j], expected.elements[1][j]);
    rotateStretchKernel<TypeParam::value>(rows.handles[0], rows.handles[1], 3, kColumns - 2, rotation);
    expectSameBits(rows, expected);
}

} // namespace
} // namespace zn::test
