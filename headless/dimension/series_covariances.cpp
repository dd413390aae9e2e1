#include "headless/dimension/series_covariances.h"

#include "headless/dimension/cross_products.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

constexpr int kPieces = 16;  // of the grid; fixed, so that the sums do not depend on the number of threads
constexpr int kTogether = 4; // at most so many pieces at a time, each with four matrices

// The data and, in turn, the differences along x, y and z.
using Sums = std::array<CrossProducts, 4>;

template <class Value> class Summation {
public:
    // rows: [voxel of the grid], where its course is among the values; empty: they are those of the entire grid
    Summation(const Value* values, int volumes, const std::array<int, 3>& size, const std::vector<unsigned char>& mask,
              std::vector<std::int64_t> rows = {})
        : values_(values), volumes_(volumes), size_(size), mask_(mask),
          rows_(std::move(rows)), step_{1, size[0], std::int64_t{1} * size[0] * size[1]} {}

    // Calls use(v) for the voxels of a piece that are inside the mask.
    template <class Use> void forPiece(int piece, Use use) const {
        const auto voxels = static_cast<std::int64_t>(mask_.size());
        for (std::int64_t v = voxels * piece / kPieces; v < voxels * (piece + 1) / kPieces; ++v) {
            if (inside(v)) use(v);
        }
    }

    // From then on, the course of voxel v of the grid is multiplied by factors[v].
    void scale(std::vector<double> factors) { factors_ = std::move(factors); }

    void addMeans(int piece, std::vector<double>& sums) const {
        forPiece(piece, [&](std::int64_t v) {
            const Course course = courseOf(v);
            for (int t = 0; t < volumes_; ++t) sums[static_cast<std::size_t>(t)] += course.at(t);
        });
    }

    // squares: [voxel of the grid]
    void residuals(int piece, const std::vector<double>& mean, const Directions& leading,
                   std::vector<double>& squares) const {
        ResidualSquares residual(leading, volumes_);
        forPiece(piece, [&](std::int64_t v) {
            const Course course = courseOf(v);
            residual.add([&](int t) { return course.at(t) - mean[static_cast<std::size_t>(t)]; },
                         squares[static_cast<std::size_t>(v)]);
        });
        residual.flush();
    }

    void addProducts(int piece, const std::vector<double>& mean, Sums& sums) const {
        forPiece(piece, [&](std::int64_t v) {
            const Course course = courseOf(v);
            sums[0].add([&](int t) { return course.at(t) - mean[static_cast<std::size_t>(t)]; });
            const std::array<std::int64_t, 3> at = {v % size_[0], v / step_[1] % size_[1], v / step_[2]};
            const auto axis = static_cast<std::size_t>((at[0] + at[1] + at[2]) % 3);
            const std::int64_t next = v + step_[axis];
            if (at[axis] + 1 == size_[axis] || !inside(next)) return;
            const Course neighbour = courseOf(next);
            sums[axis + 1].add([&](int t) { return neighbour.at(t) - course.at(t); });
        });
        for (CrossProducts& products : sums) products.flush();
    }

private:
    struct Course {
        const Value* values;
        double factor;
        double at(int t) const { return factor * static_cast<double>(values[t]); }
    };

    bool inside(std::int64_t v) const { return mask_[static_cast<std::size_t>(v)] != 0; }
    Course courseOf(std::int64_t v) const {
        const auto voxel = static_cast<std::size_t>(v);
        return {values_ + (rows_.empty() ? v : rows_[voxel]) * volumes_, factors_.empty() ? 1.0 : factors_[voxel]};
    }

    const Value* values_;
    int volumes_;
    std::array<int, 3> size_;
    const std::vector<unsigned char>& mask_;
    std::vector<std::int64_t> rows_;
    std::array<std::int64_t, 3> step_;
    std::vector<double> factors_; // empty: all 1
};

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
std::vector<double> meanCourse(const Summation<Value>& summation, const SeriesCovariances& series,
                               WorkerThreads& threads) {
    const auto order = static_cast<std::size_t>(series.volumes);
    std::vector<std::vector<double>> sums(kPieces, std::vector<double>(order));
    threads.run(kPieces, [&](int piece) { summation.addMeans(piece, sums[static_cast<std::size_t>(piece)]); });
    std::vector<double> mean(order);
    for (const auto& sum : sums) addTo(mean, sum);
    for (double& value : mean) value /= static_cast<double>(series.voxels);
    return mean;
}

// By [voxel of the grid]; empty if nothing is left as noise.
template <class Value>
std::vector<double> normalisationFactors(const Summation<Value>& summation, const SeriesCovariances& series,
                                         std::size_t grid, const Directions& leading, WorkerThreads& threads) {
    constexpr double kLargest = 10.0;
    const std::vector<double> mean = meanCourse(summation, series, threads);
    std::vector<double> factors(grid); // the sums of squares at first
    threads.run(kPieces, [&](int piece) { summation.residuals(piece, mean, leading, factors); });
    double level = 0.0;
    for (const double squares : factors) level += squares;
    level /= static_cast<double>(series.voxels);
    if (!(level > 0.0)) return {};
    for (double& factor : factors) factor = std::sqrt(level / std::max(factor, level / (kLargest * kLargest)));
    return factors;
}

template <class Value>
SeriesCovariances covariancesOf(const Summation<Value>& summation, SeriesCovariances result, WorkerThreads& threads) {
    const auto order = static_cast<std::size_t>(result.volumes);
    const std::vector<double> mean = meanCourse(summation, result, threads);
    std::array<std::vector<double>*, 4> matrices = {&result.total, &result.differences[0], &result.differences[1],
                                                    &result.differences[2]};
    std::array<std::int64_t, 4> counts{};
    for (auto* matrix : matrices) matrix->resize(order * order);
    const int together = std::min(threads.threads(), kTogether);
    for (int first = 0; first < kPieces; first += together) {
        const int count = std::min(together, kPieces - first);
        const CrossProducts none(result.volumes);
        std::vector<Sums> parts(static_cast<std::size_t>(count), Sums{none, none, none, none});
        threads.run(count, [&](int i) { summation.addProducts(first + i, mean, parts[static_cast<std::size_t>(i)]); });
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

template <class Value>
SeriesCovariances covariancesOf(Summation<Value> summation, const SeriesCovariances& empty,
                                const std::vector<unsigned char>& mask, const Directions& leading,
                                WorkerThreads& threads) {
    if (leading.count > 0) summation.scale(normalisationFactors(summation, empty, mask.size(), leading, threads));
    return covariancesOf(summation, empty, threads);
}

SeriesCovariances emptyCovariances(int volumes, const std::vector<unsigned char>& mask) {
    SeriesCovariances result;
    result.volumes = volumes;
    result.voxels = static_cast<std::int64_t>(mask.size()) - std::count(mask.begin(), mask.end(), 0);
    return result;
}

} // namespace

SeriesCovariances seriesCovariances(const TimeSeries& series, const std::array<int, 3>& size,
                                    const std::vector<unsigned char>& mask, WorkerThreads& threads,
                                    const Directions& leading) {
    const SeriesCovariances empty = emptyCovariances(series.volumes, mask);
    return series.isFloat() ? covariancesOf(Summation(series.floats.get(), series.volumes, size, mask), empty, mask,
                                            leading, threads)
                            : covariancesOf(Summation(series.shorts.get(), series.volumes, size, mask), empty, mask,
                                            leading, threads);
}

SeriesCovariances seriesCovariances(const std::vector<float>& courses, int volumes, const std::array<int, 3>& size,
                                    const std::vector<unsigned char>& mask, WorkerThreads& threads,
                                    const Directions& leading) {
    std::vector<std::int64_t> rows(mask.size());
    std::int64_t row = 0;
    for (std::size_t v = 0; v < mask.size(); ++v) rows[v] = mask[v] != 0 ? row++ : 0;
    return covariancesOf(Summation(courses.data(), volumes, size, mask, std::move(rows)),
                         emptyCovariances(volumes, mask), mask, leading, threads);
}

} // namespace zn::headless
