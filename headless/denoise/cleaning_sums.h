#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zn::headless {

/// Sums over voxels of the mask, before and after cleaning. T analysed volumes, r columns removed.
struct CleaningSums {
    std::vector<double> changesBefore; ///< [T]: squared changes since the previous volume; 0 for the first
    std::vector<double> changesAfter;
    double squaresBefore = 0.0; ///< squared deviations from the voxels' means, over all volumes
    double squaresAfter = 0.0;
    std::vector<double> products; ///< [r][r]: products of the coefficients
    std::int64_t voxels = 0;

    CleaningSums(std::size_t volumes, std::size_t columns)
        : changesBefore(volumes), changesAfter(volumes), products(columns * columns) {}

    /// Adds the sums over other voxels.
    void add(const CleaningSums& others);

    /// DVARS from one of the two sums of changes: [T], NaN for the first volume.
    std::vector<double> dvars(const std::vector<double>& changes) const;
};

/// Adds the squared changes of a course to `changes`.
///
///   course   [T]
void addChanges(const double* course, std::vector<double>& changes);

} // namespace zn::headless
