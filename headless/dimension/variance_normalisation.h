#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/dimension/masked_courses.h"
#include "headless/dimension/residual_squares.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zn::headless {

/// The factors that give the noise of every voxel the same standard deviation s, at most 10; by [voxel of the grid],
/// empty if nothing is left as noise.
///
/// What is left of a voxel's course without the spatial means and without the leading directions is its noise; s_v is
/// the square root of its sum of squares, s^2 the mean of s_v^2, and s / s_v the factor.
template <class Value>
std::vector<double> normalisationFactors(const MaskedCourses<Value>& courses, const Directions& leading,
                                         WorkerThreads& threads) {
    constexpr double kLargest = 10.0;
    const std::vector<double> mean = meanCourse(courses, threads);
    std::vector<double> factors(courses.gridVoxels()); // the sums of squares at first
    threads.run(MaskedCourses<Value>::kPieces, [&](int piece) {
        ResidualSquares residual(leading, courses.volumes());
        courses.forPiece(piece, [&](std::int64_t v) {
            const auto course = courses.course(v);
            residual.add([&](int t) { return course.at(t) - mean[static_cast<std::size_t>(t)]; },
                         factors[static_cast<std::size_t>(v)]);
        });
        residual.flush();
    });
    double level = 0.0;
    for (const double squares : factors) level += squares;
    level /= static_cast<double>(courses.voxelsInside());
    if (!(level > 0.0)) return {};
    for (double& factor : factors) factor = std::sqrt(level / std::max(factor, level / (kLargest * kLargest)));
    return factors;
}

} // namespace zn::headless
