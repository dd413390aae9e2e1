#include "headless/symmetric/anderson_mixing.h"

#include "headless/blas/symmetric_matrix.h"
#include "headless/symmetric/vector_arithmetic.h"

namespace zn::headless {

namespace {

constexpr std::size_t kDepth = 8;             // steps remembered
constexpr double kSmallestEigenvalue = 1e-12; // relative; directions below are not determined by the past steps

} // namespace

void AndersonMixing::forget() {
    *this = AndersonMixing();
}

void AndersonMixing::remember(const Values& value, const Values& residual) {
    if (!value_.empty()) {
        valueSteps_.push_back(difference(value, value_));
        residualSteps_.push_back(difference(residual, residual_));
    }
    if (valueSteps_.size() > kDepth) {
        valueSteps_.pop_front();
        residualSteps_.pop_front();
    }
    value_ = value;
    residual_ = residual;
}

// The weights of the steps that minimise |residual - sum of weight step|, by the eigenvectors of the steps' products.
AndersonMixing::Values AndersonMixing::weights(const Values& residual) const {
    const std::size_t steps = residualSteps_.size();
    Values products(steps * steps);
    Values values(steps);
    Values result(steps);
    for (std::size_t i = 0; i < steps; ++i) {
        for (std::size_t j = i; j < steps; ++j) products[i * steps + j] = dot(residualSteps_[i], residualSteps_[j]);
    }
    if (symmetricEigenpairs(products.data(), static_cast<int>(steps), values.data()) != 0) return result;
    for (std::size_t k = 0; k < steps; ++k) {
        if (values[k] <= kSmallestEigenvalue * values.front()) continue;
        const double* vector = products.data() + k * steps;
        double projection = 0.0;
        for (std::size_t i = 0; i < steps; ++i) projection += vector[i] * dot(residualSteps_[i], residual);
        for (std::size_t i = 0; i < steps; ++i) result[i] += projection / values[k] * vector[i];
    }
    return result;
}

UnmixingMatrix AndersonMixing::next(const UnmixingMatrix& x, const UnmixingMatrix& gx) {
    const int n = x.dimension();
    const Values value(gx.row(0), gx.row(n));
    remember(value, difference(value, Values(x.row(0), x.row(n))));
    UnmixingMatrix result = gx;
    if (residualSteps_.empty()) return result;
    const Values weight = weights(residual_);
    for (std::size_t step = 0; step < weight.size(); ++step) {
        for (std::size_t i = 0; i < value.size(); ++i) result.data()[i] -= weight[step] * valueSteps_[step][i];
    }
    return result;
}

} // namespace zn::headless
