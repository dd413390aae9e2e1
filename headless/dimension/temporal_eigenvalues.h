#pragma once

#include "headless/nifti/time_series.h"

#include <vector>

namespace zn::headless {

/// The eigenvalues, in descending order, of the temporal covariance over the voxels of the mask: T x T, the spatial
/// mean of every volume removed, divided by the number of voxels. As the temporal mean of a voxel is kept, the first
/// one belongs to the mean image. Products by the BLAS, eigenvalues by LAPACK (dsyev). Besides the series, this needs
/// memory for two T x T matrices and about a thousand voxels. Throws Failure (kOther) if LAPACK does not converge.
///
///   mask   one byte per voxel, nonzero: included; at least one voxel, all of them finite in every volume
std::vector<double> temporalEigenvalues(const TimeSeries& series, const std::vector<unsigned char>& mask);

} // namespace zn::headless
