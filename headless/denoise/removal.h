#pragma once

#include "headless/denoise/denoise_options.h"
#include "headless/denoise/regressors.h"

#include <vector>

namespace zn::headless {

/// Columns less than this apart from a combination of others, in relative terms, count as dependent: the tables of
/// confounds and courses hold single-precision numbers.
inline constexpr double kDependent = 1e-6;

/// What is subtracted from the centred course y of every voxel: the sum over the columns of column times coefficient,
/// where the coefficient is the product of the column's weights with y. T analysed volumes, r columns: the rejected
/// components, orthogonalised or not, then confounds and cosines.
struct Removal {
    int volumes = 0;
    int count = 0;               ///< r
    std::vector<double> columns; ///< [r][T], with mean 0
    std::vector<double> weights; ///< [r][T]
    int designColumns = 0;       ///< of the regression that the weights come from
    int designRank = 0;          ///< fewer than its columns when some are linearly dependent
    int lostDegrees = 0;         ///< dimensions of the space that is removed
};

/// With B the rejected components, G the kept ones and F confounds and cosines, and + for the pseudo-inverse:
///
///   nonaggr    the rows of [B F G]+ that belong to B and F
///   aggr       [B F]+
///   orthaggr   [B' F]+ with B' = B - G G+ B, columns B'
///
/// Linearly dependent columns share what they have in common (the solution of smallest length).
///
/// Whether nonaggr removes confounds and cosines depends on the kept courses: what the fit ascribes to those stays.
Removal makeRemoval(const Regressors& regressors, DenoiseMethod method);

/// The largest share of a kept course's sum of squares that confounds and cosines explain, from 0 to 1.
double largestNuisanceShare(const Regressors& regressors);

} // namespace zn::headless
