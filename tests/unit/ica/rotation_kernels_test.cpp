#include "ica/rotation_kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

namespace zn {
namespace {

constexpr int kColumns = 23; // 0 .. 22, not a multiple of any number of lanes

// Sixteen rows, their elements p and some rotations of one pass.
struct Case {
    std::vector<std::vector<double>> rows;
    std::vector<double*> handles;
    std::vector<double> shared;
    std::vector<PlaneRotation> rotations;

    Case() : rows(kTileRows, std::vector<double>(kColumns)), shared(kTileRows) {
        std::mt19937 random(11);
        const auto number = [&] { return static_cast<double>(random()) / 4294967296.0 - 0.5; };
        for (auto& row : rows) {
            for (double& value : row) value = number();
            handles.push_back(row.data());
        }
        for (double& value : shared) value = number();
        for (int q : {2, 3, 7, 15, 22}) {
            const double angle = number();
            rotations.push_back({std::sin(angle), std::tan(angle / 2), q});
        }
    }

    template <int lanes> void rotate() {
        std::vector<double> tile(kTileRows * kColumns);
        fillTileKernel<lanes>(handles.data(), 2, kColumns - 1, tile.data());
        rotateTileKernel<lanes>(rotations.data(), rotations.data() + rotations.size(), shared.data(), tile.data());
        emptyTileKernel<lanes>(tile.data(), 2, kColumns - 1, handles.data());
        rotateStretchKernel<lanes>(handles[0], handles[1], 3, kColumns - 2, rotations[0]);
    }

    // One rotation after the other, one row after the other.
    void rotatePlainly() {
        const auto apply = [](const PlaneRotation& r, double& x, double& y) {
            const double g = x;
            const double h = y;
            x = g - r.s * (h + g * r.tau);
            y = h + r.s * (g - h * r.tau);
        };
        for (const auto& r : rotations) {
            for (std::size_t i = 0; i < rows.size(); ++i) apply(r, shared[i], rows[i][static_cast<std::size_t>(r.q)]);
        }
        for (std::size_t j = 3; j <= kColumns - 2; ++j) apply(rotations[0], rows[0][j], rows[1][j]);
    }
};

void expectSameBits(const Case& a, const Case& b) {
    EXPECT_EQ(std::memcmp(a.shared.data(), b.shared.data(), a.shared.size() * sizeof(double)), 0);
    for (std::size_t i = 0; i < a.rows.size(); ++i) {
        EXPECT_EQ(std::memcmp(a.rows[i].data(), b.rows[i].data(), kColumns * sizeof(double)), 0) << "row " << i;
    }
}

TEST(RotationKernels, OfTheBaselineEqualOneRotationAfterTheOther) {
    Case plain;
    plain.rotatePlainly();
    Case tiled;
    tiled.rotate<2>();
    expectSameBits(tiled, plain);
}

#ifndef ZN_BASELINE_KERNELS_ONLY
TEST(RotationKernels, OfAvx2EqualOneRotationAfterTheOther) {
    if (__builtin_cpu_supports("avx2") == 0) GTEST_SKIP() << "this processor has no AVX2";
    Case plain;
    plain.rotatePlainly();
    Case tiled;
    tiled.rotate<4>();
    expectSameBits(tiled, plain);
}
#endif

} // namespace
} // namespace zn
