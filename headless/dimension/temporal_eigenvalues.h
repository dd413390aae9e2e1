#pragma once

#include "headless/nifti/time_series.h"

#include <vector>

namespace zn::headless {

/// The eigenvalues, in descending order, of the temporal covariance over the voxels of the mask: T x T, the spatial
/// mean of every volume removed, divided by the number of voxels. As the mean of a voxel over time stays in, the first
/// one is the mean image. Products by the BLAS, eigenvalues by LAPACK (dsyev); beside the series, memory holds two T x
/// T matrices and a thousand voxels. Throws Failure (kOther) should LAPACK not converge.
///
///   mask   one byte a voxel, not 0: in; at least one voxel, all of them finite in every volume
std::vector<double> temporalEigenvalues(const TimeSeries& series, const std::vector<unsigned char>& mask);

} // namespace zn::headless
