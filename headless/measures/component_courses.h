#pragma once

#include "headless/blas/matrix_products.h"
#include "headless/host/volume_maps.h"
#include "headless/nifti/time_series.h"

#include <vector>

namespace zn::headless {

/// The time courses with which the maps of a run give its data back. K components, T volumes.
struct ComponentCourses {
    std::vector<std::vector<float>> courses; ///< [component][volume], in units of the data per unit of the map
    std::vector<float> spatialMean;          ///< [volume]: mean over the analysed voxels, which belongs to no component
    std::vector<double> explainedPercent;    ///< [component]; see below
};

/// Fits the maps S (K x V) to the analysed data X (V x T), from which the mean over the voxels of each volume was
/// removed, by least squares: the courses are B = (S St)^-1 S X, and X is St B plus what the components leave out. The
/// variance explained by component k is, with ' for the mean over time removed,
///
///   100 % * sum over v, t of (S_kv B'_kt)^2 / sum over v, t of X'_vt^2
///
/// The maps of a run are orthogonal over the voxels, so the shares of its components add up to that of all of them.
///
///   mask   one byte per voxel of the grid; the maps have one value per voxel of the grid
///
/// All numbers are NaN if the maps are linearly dependent or not finite; the shares also if the data are constant over
/// time. Reads the data in blocks of voxels, with the same result for any number of threads.
ComponentCourses fitCourses(const TimeSeries& series, const std::vector<unsigned char>& mask, const VolumeMaps& maps,
                            MatrixProducts& products);

} // namespace zn::headless
