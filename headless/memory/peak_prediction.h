#pragma once

#include <cstdint>

namespace zn::headless {

/// The quantities that determine the memory of a run.
struct RunSize {
    std::int64_t gridVoxels = 0;
    std::int64_t voxels = 0; ///< analysed
    int volumes = 0;
    int components = 0;
    std::int64_t seriesBytes = 0; ///< of the functional data as stored by the host
    int storedBytes = 0;          ///< of a value in a file that must be converted; 0: no conversion
    int regions = 0;
    int repeats = 1;        ///< runs of the plug-in
    int threads = 1;        ///< that compress the maps
    bool symmetric = false; ///< the symmetric estimate instead of the plug-in's own
};

/// The peak memory of a run in bytes: the largest of the stages below, each on top of the functional data, of 11 bytes
/// per grid voxel and of the process itself. G grid voxels, V analysed, T volumes, n components, R regions; in bytes:
///
///   reading      G (128 + stored type)        twice as many volumes as fill a cache line, and one as stored
///   extraction   4 V T + 56 V + 4 R (G + V)   single-precision data, tables of voxels, regions
///   centring     12 V T + 28 V                the same data also in double precision
///   separation   8 V T + 8 V n + 36 V         whitened data; the plug-in's components one after another
///                + 9 P n + V n               for the symmetric estimate: P voxels on which starts are tried, and
///                                             the sums of parts of the voxels
///   maps         8 V T + 8 V n, then 12 V n, then 4 V n + 4 G n for the maps that are kept, then again up to
///                4 G n for what is being compressed: 32 MiB per thread
///   repeats      8 V n R + 4 G n + 16 (n R)^2 throughout, for R > 1 runs: all their maps, and two
///                                             copies of their correlations
std::int64_t predictedPeakBytes(const RunSize& size);

} // namespace zn::headless
