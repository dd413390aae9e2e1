#pragma once

#include "headless/dimension/residual_noise.h"

namespace zn::headless {

/// The number of eigenvalues that noise of the kind in the data cannot yield.
struct ParallelAnalysis {
    int count = 1;
    /// False if the eigenvalues descend without an edge: noise is then not what is left after any number of directions
    /// that the analysis could keep, and `count` is a compromise.
    bool hasEdge = true;
    NoiseModel noise; ///< after `count` directions
};

/// The largest number that it yields of d eigenvalues above rounding level.
constexpr int mostComponents(int d) {
    return d < 3 ? 1 : d / 3;
}

/// Parallel analysis in its deterministic form: not random noise but the edge of its eigenvalues is compared with those
/// of the data (Dobriban and Owen 2019, Journal of the Royal Statistical Society B 81, 163-183).
///
/// Starting with k = 1, the mean image, the noise after k directions is modelled (ResidualNoise), and k becomes the
/// number of eigenvalues above 1.1 times its edge, until it no longer grows. The margin of a tenth covers what the
/// model leaves out: the finite size, the edge of the mask, noise that varies over space. As long as strong components
/// are part of what is left, the noise appears stronger and smoother than it is, and k could stop too early. So up to
/// two further directions are projected out tentatively, and k goes on if more eigenvalues than those are above the
/// edge then.
///
/// Real noise has weak structure at all levels. If k exceeds d / 3, with d the number of eigenvalues above rounding
/// level, the noise has no edge. Then the eigenvalues above 1.5 times the edge count, at most d / 3 of them, and up to
/// d / 3 directions are projected out tentatively.
ParallelAnalysis parallelAnalysis(const ResidualNoise& noise);

} // namespace zn::headless
