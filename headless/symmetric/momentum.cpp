#include "headless/symmetric/momentum.h"

#include "headless/symmetric/vector_arithmetic.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

constexpr double kSameDirection = 0.5; // cosine
constexpr double kMost = 0.9;          // share of the last change of g

} // namespace

void Momentum::forget() {
    *this = Momentum();
}

UnmixingMatrix Momentum::next(const UnmixingMatrix& x, const UnmixingMatrix& gx) {
    const int n = x.dimension();
    const std::vector<double> value(gx.row(0), gx.row(n));
    const std::vector<double> step = difference(value, {x.row(0), x.row(n)});
    const bool goesOn =
        !step_.empty() && dot(step, step_) > kSameDirection * std::sqrt(dot(step, step) * dot(step_, step_));
    steps_ = goesOn ? steps_ + 1 : 0;
    UnmixingMatrix result = gx;
    if (goesOn) {
        const double share = std::min(kMost, steps_ / (steps_ + 3.0));
        for (std::size_t i = 0; i < value.size(); ++i) result.data()[i] += share * (value[i] - value_[i]);
    }
    value_ = value;
    step_ = step;
    return result;
}

} // namespace zn::headless
