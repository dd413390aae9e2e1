// Compares the module's four products with direct sums, for every combination of flags and several shapes.
#include "headless/host/current_session.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// Whole numbers of magnitude up to 9: every sum here is exact even in single precision, so results must be equal.
template <class Real> std::vector<Real> wholeNumbers(int count, unsigned seed) {
    std::vector<Real> values;
    for (int i = 0; i < count; ++i) {
        seed = seed * 1664525U + 1013904223U;
        values.push_back(static_cast<Real>(static_cast<int>(seed >> 28) - 7));
    }
    return values;
}

template <class Real>
Real element(const std::vector<Real>& stored, bool transposed, int rows, int columns, int i, int j) {
    return transposed ? stored[static_cast<std::size_t>(j * rows + i)]
                      : stored[static_cast<std::size_t>(i * columns + j)];
}

template <class Real>
std::vector<Real> product(const std::vector<Real>& a, const std::vector<Real>& b, int m, int n, int k, bool ta,
                          bool tb) {
    std::vector<Real> r(static_cast<std::size_t>(m * n));
    for (int i = 0; i < m; ++i) {
        for (int j = 0; j < n; ++j) {
            for (int l = 0; l < k; ++l) {
                r[static_cast<std::size_t>(i * n + j)] += element(a, ta, m, k, i, l) * element(b, tb, k, n, l, j);
            }
        }
    }
    return r;
}

void hostProduct(const float* a, const float* b, float* r, int m, int n, int k, bool ta, bool tb) {
    zn_intel_matrix_matrix_mult_f(a, b, r, m, n, k, ta, tb);
}
void hostProduct(const double* a, const double* b, double* r, int m, int n, int k, bool ta, bool tb) {
    zn_intel_matrix_matrix_mult_d(a, b, r, m, n, k, ta, tb);
}
void hostProduct(const float* a, const float* x, float* y, int m, int n, bool t) {
    zn_intel_matrix_vector_mult_f(a, x, y, m, n, t);
}
void hostProduct(const double* a, const double* x, double* y, int m, int n, bool t) {
    zn_intel_matrix_vector_mult_d(a, x, y, m, n, t);
}

class SilentEvents : public SessionEvents {
public:
    void logLine(std::string_view) override {}
    void message(std::string_view) override {}
    void saveMaps(const VolumeMaps&, std::string_view) override {}
    [[noreturn]] void outOfMemory() override { std::abort(); }
};

// The functions use the attached session.
template <class Real> class HostProducts : public testing::Test {
protected:
    HostProducts() {
        session_.products = &products_;
        session_.events = &events_;
        attachSession(&session_);
    }
    ~HostProducts() override { attachSession(nullptr); }

private:
    MatrixProducts products_{2};
    SilentEvents events_;
    Session session_;
};
using Precisions = testing::Types<float, double>;
TYPED_TEST_SUITE(HostProducts, Precisions);

TYPED_TEST(HostProducts, MatrixTimesMatrixForEveryFlagAndShape) {
    for (const auto& [m, n, k] : {std::tuple(1, 1, 1), {2, 3, 4}, {5, 5, 5}, {7, 2, 31}, {1, 9, 3}, {40, 33, 70}}) {
        const auto a = wholeNumbers<TypeParam>(m * k, 1);
        const auto b = wholeNumbers<TypeParam>(k * n, 2);
        for (const bool ta : {false, true}) {
            for (const bool tb : {false, true}) {
                std::vector<TypeParam> r(static_cast<std::size_t>(m * n), TypeParam{99});
                hostProduct(a.data(), b.data(), r.data(), m, n, k, ta, tb);
                EXPECT_EQ(r, product(a, b, m, n, k, ta, tb)) << m << n << k << ta << tb;
            }
        }
    }
}

TYPED_TEST(HostProducts, ABlockTimesItselfForEveryFlag) {
    // Square, so that the same block is valid on both sides whatever the flags: the symmetric routine handles two of
    // the four combinations and must not be used for the other two.
    for (const int n : {1, 2, 17, 64}) {
        const auto a = wholeNumbers<TypeParam>(n * n, 3);
        for (const bool ta : {false, true}) {
            for (const bool tb : {false, true}) {
                std::vector<TypeParam> r(a.size(), TypeParam{99});
                hostProduct(a.data(), a.data(), r.data(), n, n, n, ta, tb);
                EXPECT_EQ(r, product(a, a, n, n, n, ta, tb)) << n << ta << tb;
            }
        }
    }
}

TYPED_TEST(HostProducts, TheCovarianceOfATallMatrixIsCompleteAndExactlySymmetric) {
    constexpr int kVoxels = 1000;
    constexpr int kVolumes = 21;
    const auto x = wholeNumbers<TypeParam>(kVoxels * kVolumes, 4);
    std::vector<TypeParam> r(kVolumes * kVolumes, TypeParam{99});
    hostProduct(x.data(), x.data(), r.data(), kVolumes, kVolumes, kVoxels, true, false);
    EXPECT_EQ(r, product(x, x, kVolumes, kVolumes, kVoxels, true, false));
    for (int i = 0; i < kVolumes; ++i) {
        for (int j = 0; j < kVolumes; ++j)
            ASSERT_EQ(r[std::size_t(i * kVolumes + j)], r[std::size_t(j * kVolumes + i)]);
    }
}

TYPED_TEST(HostProducts, AWideBlockTimesItsTranspose) {
    const auto b = wholeNumbers<TypeParam>(6 * 50, 5); // 6 x 50
    std::vector<TypeParam> r(36, TypeParam{99});
    hostProduct(b.data(), b.data(), r.data(), 6, 6, 50, false, true);
    EXPECT_EQ(r, product(b, b, 6, 6, 50, false, true));
}

TYPED_TEST(HostProducts, MatrixTimesVectorForBothFlags) {
    for (const auto& [m, n] : {std::pair(1, 1), {3, 8}, {8, 3}, {60, 41}}) {
        const auto a = wholeNumbers<TypeParam>(m * n, 6);
        for (const bool transpose : {false, true}) {
            const int inner = transpose ? m : n;
            const int outer = transpose ? n : m;
            const auto x = wholeNumbers<TypeParam>(inner, 7);
            std::vector<TypeParam> y(static_cast<std::size_t>(outer), TypeParam{99});
            hostProduct(a.data(), x.data(), y.data(), m, n, transpose);
            EXPECT_EQ(y, product(a, x, outer, 1, inner, transpose, false)) << m << n << transpose;
        }
    }
}

TYPED_TEST(HostProducts, AnEmptySumIsZero) {
    std::vector<TypeParam> r(6, TypeParam{99});
    hostProduct(r.data(), r.data() + 1, r.data(), 2, 3, 0, false, false);
    EXPECT_THAT(r, testing::Each(TypeParam{0}));
    std::vector<TypeParam> y(4, TypeParam{99});
    hostProduct(r.data(), r.data(), y.data(), 4, 0, false);
    EXPECT_THAT(y, testing::Each(TypeParam{0}));
}

} // namespace
} // namespace zn::test
