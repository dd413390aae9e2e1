#pragma once

#include "headless/symmetric/unmixing_matrix.h"

#include <deque>
#include <vector>

namespace zn::headless {

/// Speeds up a fixed-point iteration x <- g(x) that converges linearly: the next x combines the last values of g such
/// that the residuals g(x) - x, combined in the same way, are as small as possible. The fixed point is unchanged.
///
/// Walker and Ni (2011), Anderson acceleration for fixed-point iterations, SIAM Journal on Numerical Analysis 49(4),
/// 1715-1735, in the form with differences; the least-squares problem is solved through its normal equations.
class AndersonMixing {
public:
    /// The next x, given x and g(x).
    UnmixingMatrix next(const UnmixingMatrix& x, const UnmixingMatrix& gx);

    /// Forgets the past, as after a jump.
    void forget();

private:
    using Values = std::vector<double>;

    void remember(const Values& value, const Values& residual);
    Values weights(const Values& residual) const;

    Values value_;    // g of the last x; empty: none
    Values residual_; // g(x) - x of the last x
    std::deque<Values> valueSteps_;
    std::deque<Values> residualSteps_;
};

} // namespace zn::headless
