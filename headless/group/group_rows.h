#pragma once

#include "headless/blas/worker_threads.h"

#include <cstdint>
#include <vector>

namespace zn::headless {

/// The leading principal components over the volumes of one or more runs: row i is the unit map i (the right singular
/// vector over the voxels) times its singular value. Rows are orthogonal to each other.
struct GroupRows {
    std::int64_t voxels = 0;
    std::vector<float> values;       ///< [row][voxel]
    std::vector<double> eigenvalues; ///< [row]: sum of squares of a row, descending; all above 0
    double squares = 0.0;            ///< of everything that was absorbed, including what the rows leave out

    int count() const { return static_cast<int>(eigenvalues.size()); }
};

/// One step of the incremental group PCA: replaces W by the leading principal components of [W; X], which stack the
/// rows of both. As long as nothing is cut off, the result is that of the PCA of all data at once. The memory does not
/// depend on how many runs have been absorbed.
///
///   group       W; in: the rows so far, none at the beginning; out: at most `keep` rows, fewer where the data have
///               fewer dimensions
///   series      X, [voxel][volume], prepared and centred; as many voxels as the group's rows
///   volumes     T
///   keep        rows to keep, at least 1
///
/// The matrix of inner products is summed in double precision, in blocks of voxels that are added in their order, so
/// that the result does not depend on the number of threads. Throws std::bad_alloc, and std::runtime_error if LAPACK
/// does not converge.
///
/// Method: Smith et al. (2014), NeuroImage 101, 738-749 (MIGP).
void absorbRun(GroupRows& group, const float* series, int volumes, int keep, WorkerThreads& threads);

/// The same for the rows of another group, such as those of another batch of runs.
void absorbGroup(GroupRows& group, const GroupRows& other, int keep, WorkerThreads& threads);

/// The number of rows that a study keeps: as many as there are volumes in all runs, but at most 2 T - 1, where T is the
/// number of volumes in the longest run, and at most 1000.
int rowsToKeep(const std::vector<int>& volumes);

} // namespace zn::headless
