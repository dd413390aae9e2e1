#pragma once

#include "headless/symmetric/fixed_point_pass.h"
#include "headless/symmetric/unmixing_matrix.h"

#include <functional>
#include <vector>

namespace zn::headless {

/// When a search ends.
struct SearchLimits {
    double epsilon; ///< every unit vector has moved less than this in one iteration, up to its sign
    int iterations; ///< at most so many; below 0: no limit
};

/// The state of a search when it ended.
struct SearchEnd {
    UnmixingMatrix w;          ///< orthonormal rows, unless no component is settled
    std::vector<bool> settled; ///< [component], it moved less than epsilon in the last iteration
    int iterations = 0;

    int settledCount() const;
    bool converged() const { return settledCount() == w.dimension(); }
};

/// Repeats the fixed-point update and the decorrelation until all components are settled at once. The result is that of
/// the last update. A start whose rows become linearly dependent or non-finite ends with no component settled.
///
/// On measured data the plain iteration needs hundreds of passes: it crawls past saddles, converges linearly, and may
/// alternate between two states for ever. Therefore it gathers momentum (Momentum), goes only half of the way to the
/// update once the movement has not decreased for a while, and combines past steps near the end (AndersonMixing). None
/// of these changes a fixed point or the test of convergence, which is made with the full update.
///
///   start   rows need not be decorrelated
///   after   called after every iteration
SearchEnd searchFrom(UnmixingMatrix start, FixedPointPass& pass, const SearchLimits& limits,
                     const std::function<void()>& after);

} // namespace zn::headless
