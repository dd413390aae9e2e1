#pragma once

#include "headless/blas/matrix_products.h"

#include <span>
#include <vector>

namespace zn::headless {

/// Makes every map have mean 0 and length 1 over the chosen voxels, so that inner products of the results are Pearson
/// correlations.
///
///   maps     [map][voxel], map after map
///   chosen   voxels of a map, counted from 0
///   result   [map][chosen voxel]; a map that is constant or holds non-finite values becomes zeros, which correlate
///            with nothing
std::vector<double> standardisedMaps(std::span<const float> maps, std::size_t voxels,
                                     const std::vector<std::size_t>& chosen);

/// All correlations of two sets of such maps, [map of a][map of b]; `voxels` is the number of chosen voxels.
std::vector<double> correlations(MatrixProducts& products, const std::vector<double>& a, const std::vector<double>& b,
                                 std::size_t voxels);

} // namespace zn::headless
