#include "headless/dimension/series_covariances.h"

#include "headless/dimension/cross_products.h"
#include "headless/dimension/masked_courses.h"
#include "headless/dimension/variance_normalisation.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr int kTogether = 4; // at most so many pieces at a time, each with four matrices

// The data and, in turn, the differences along x, y and z.
using Sums = std::array<CrossProducts, 4>;

template <class Value>
void addProducts(const MaskedCourses<Value>& courses, const std::array<int, 3>& size, int piece,
                 const std::vector<double>& mean, Sums& sums) {
    const std::array<std::int64_t, 3> step = {1, size[0], std::int64_t{1} * size[0] * size[1]};
    courses.forPiece(piece, [&](std::int64_t v) {
        const auto course = courses.course(v);
        sums[0].add([&](int t) { return course.at(t) - mean[static_cast<std::size_t>(t)]; });
        const std::array<std::int64_t, 3> at = {v % size[0], v / step[1] % size[1], v / step[2]};
        const auto axis = static_cast<std::size_t>((at[0] + at[1] + at[2]) % 3);
        const std::int64_t next = v + step[axis];
        if (at[axis] + 1 == size[axis] || !courses.inside(next)) return;
        const auto neighbour = courses.course(next);
        sums[axis + 1].add([&](int t) { return neighbour.at(t) - course.at(t); });
    });
    for (CrossProducts& products : sums) products.flush();
}

void addTo(std::vector<double>& sum, const std::vector<double>& term) {
    for (std::size_t i = 0; i < sum.size(); ++i) sum[i] += term[i];
}

// Divided by a number, the lower triangle filled in.
void complete(std::vector<double>& matrix, std::size_t order, double divisor) {
    for (std::size_t i = 0; i < order; ++i) {
        for (std::size_t j = i; j < order; ++j) {
            matrix[i * order + j] /= divisor;
            matrix[j * order + i] = matrix[i * order + j];
        }
    }
}

template <class Value>
SeriesCovariances covariancesOf(MaskedCourses<Value> courses, const std::array<int, 3>& size, const Directions& leading,
                                WorkerThreads& threads) {
    constexpr int kPieces = MaskedCourses<Value>::kPieces;
    if (leading.count > 0) courses.scale(normalisationFactors(courses, leading, threads));
    const std::vector<double> mean = meanCourse(courses, threads);
    SeriesCovariances result;
    result.volumes = courses.volumes();
    result.voxels = courses.voxelsInside();
    const auto order = static_cast<std::size_t>(result.volumes);
    std::array<std::vector<double>*, 4> matrices = {&result.total, &result.differences[0], &result.differences[1],
                                                    &result.differences[2]};
    std::array<std::int64_t, 4> counts{};
    for (auto* matrix : matrices) matrix->resize(order * order);
    const int together = std::min(threads.threads(), kTogether);
    for (int first = 0; first < kPieces; first += together) {
        const int count = std::min(together, kPieces - first);
        const CrossProducts none(result.volumes);
        std::vector<Sums> parts(static_cast<std::size_t>(count), Sums{none, none, none, none});
        threads.run(count,
                    [&](int i) { addProducts(courses, size, first + i, mean, parts[static_cast<std::size_t>(i)]); });
        for (const Sums& part : parts) {
            for (std::size_t m = 0; m < matrices.size(); ++m) {
                addTo(*matrices[m], part[m].sum());
                counts[m] += part[m].total();
            }
        }
    }
    for (std::size_t m = 0; m < matrices.size(); ++m) {
        complete(*matrices[m], order, static_cast<double>(counts[m]) * (m == 0 ? 1.0 : 2.0));
        if (counts[m] == 0) matrices[m]->clear();
    }
    return result;
}

} // namespace

SeriesCovariances seriesCovariances(const TimeSeries& series, const std::array<int, 3>& size,
                                    const std::vector<unsigned char>& mask, WorkerThreads& threads,
                                    const Directions& leading) {
    const int volumes = series.volumes;
    return series.isFloat() ? covariancesOf(MaskedCourses(series.floats.get(), volumes, mask), size, leading, threads)
                            : covariancesOf(MaskedCourses(series.shorts.get(), volumes, mask), size, leading, threads);
}

SeriesCovariances seriesCovariances(const std::vector<float>& courses, int volumes, const std::array<int, 3>& size,
                                    const std::vector<unsigned char>& mask, WorkerThreads& threads,
                                    const Directions& leading) {
    std::vector<std::int64_t> rows(mask.size());
    std::int64_t row = 0;
    for (std::size_t v = 0; v < mask.size(); ++v) rows[v] = mask[v] != 0 ? row++ : 0;
    return covariancesOf(MaskedCourses(courses.data(), volumes, mask, std::move(rows)), size, leading, threads);
}

} // namespace zn::headless
