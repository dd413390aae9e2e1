#pragma once

#include "headless/symmetric/unmixing_matrix.h"

#include <vector>

namespace zn::headless {

/// Speeds up a fixed-point iteration x <- g(x) that goes the same way in small steps for a long time, as past a saddle:
/// the next x lies beyond g(x), by a share of the last change of g that grows while the direction stays. It goes where
/// the plain iteration goes, unlike AndersonMixing, which ends in any fixed point, and starts again after a turn.
///
/// Nesterov (1983), Soviet Mathematics Doklady 27(2), 372-376; O'Donoghue and Candes (2015), Adaptive restart for
/// accelerated gradient schemes, Foundations of Computational Mathematics 15(3), 715-732.
class Momentum {
public:
    /// The next x, given x and g(x).
    UnmixingMatrix next(const UnmixingMatrix& x, const UnmixingMatrix& gx);

    /// Forgets the past, as after a jump.
    void forget();

private:
    std::vector<double> value_; // g of the last x; empty: none
    std::vector<double> step_;  // g(x) - x of the last x
    int steps_ = 0;             // in about the same direction, before this one
};

} // namespace zn::headless
