#include "headless/prepare/change_sums.h"

#include "unit/kernel_forms.h"

#include <array>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

template <class Form> class ChangeSums : public KernelForm<Form> {};
TYPED_TEST_SUITE(ChangeSums, KernelForms, NameOfKernelForm);

using Sums = std::array<float, kChangeSums>;

void addLiterally(const std::vector<float>& a, const std::vector<float>& b, Sums& differences, Sums& squares) {
    const std::size_t whole = (a.size() - 1) / kChangeSums * kChangeSums;
    for (std::size_t change = 0; change + 1 < a.size(); ++change) {
        const std::size_t sum = change < whole ? change % kChangeSums : 0;
        const float x = a[change + 1] - a[change];
        const float y = b[change + 1] - b[change];
        differences[sum] += (x - y) * (x - y);
        squares[sum] += x * x + y * y;
    }
}

TYPED_TEST(ChangeSums, GiveTheBitsOfTheLiteralForm) {
    std::mt19937 generator(1);
    std::normal_distribution<float> normal(500.0f, 20.0f);
    for (std::size_t volumes = 1; volumes < 60; ++volumes) {
        std::vector<float> a(volumes);
        std::vector<float> b(volumes);
        for (std::size_t t = 0; t < volumes; ++t) {
            a[t] = normal(generator);
            b[t] = normal(generator);
        }
        Sums differences{1.0f, 2.0f}; // what was there before
        Sums squares{3.0f};
        Sums literalDifferences = differences;
        Sums literalSquares = squares;
        changeSumsKernel<TypeParam::value>(a.data(), b.data(), static_cast<int>(volumes), differences.data(),
                                           squares.data());
        addLiterally(a, b, literalDifferences, literalSquares);
        EXPECT_EQ(differences, literalDifferences) << volumes;
        EXPECT_EQ(squares, literalSquares) << volumes;
    }
}

} // namespace
} // namespace zn::test
