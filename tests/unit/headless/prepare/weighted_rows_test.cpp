#include "headless/prepare/weighted_rows.h"

#include "unit/kernel_forms.h"

#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

template <class Form> class WeightedRows : public KernelForm<Form> {};
TYPED_TEST_SUITE(WeightedRows, KernelForms, NameOfKernelForm);

std::vector<float> randomRow(int columns, unsigned seed) {
    std::mt19937 generator(seed);
    std::normal_distribution<float> normal(100.0f, 30.0f);
    std::vector<float> row(static_cast<std::size_t>(columns));
    for (float& value : row) value = normal(generator);
    return row;
}

// Fewer columns than a vector has, whole vectors, and vectors that overlap at the end.
TYPED_TEST(WeightedRows, GiveTheBitsOfTheLiteralForm) {
    for (int columns = 1; columns < 150; ++columns) {
        const std::vector<float> values[] = {randomRow(columns, 1), randomRow(columns, 2), randomRow(columns, 3)};
        const WeightedRow rows[] = {{0.25f, values[0].data()}, {0.6f, values[1].data()}, {-0.1f, values[2].data()}};
        std::vector<float> sums(static_cast<std::size_t>(columns));
        addRowsKernel<TypeParam::value>(rows, 3, columns, 0.7f, sums.data());
        for (std::size_t t = 0; t < sums.size(); ++t) {
            float sum = 0.0f;
            for (const WeightedRow& row : rows) sum += row.weight * row.values[t];
            ASSERT_EQ(sums[t], sum / 0.7f) << columns << " " << t;
        }
    }
}

} // namespace
} // namespace zn::test
