#include "headless/dimension/cross_products.h"

#include "headless/blas/symmetric_matrix.h"

namespace zn::headless {

CrossProducts::CrossProducts(int volumes)
    : volumes_(volumes), rows_(static_cast<std::size_t>(kRows) * static_cast<std::size_t>(volumes)),
      sum_(static_cast<std::size_t>(volumes) * static_cast<std::size_t>(volumes)) {}

void CrossProducts::flush() {
    if (count_ > 0) addCrossProducts(rows_.data(), count_, volumes_, 1.0, sum_.data());
    count_ = 0;
}

} // namespace zn::headless
