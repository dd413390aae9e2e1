#include "headless/group/dual_regression.h"

#include "headless/blas/block_product.h"
#include "headless/blas/one_blas_thread.h"
#include "headless/blas/symmetric_matrix.h"
#include "headless/group/normal_deviate.h"
#include "headless/group/voxel_blocks.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zn::headless {

namespace {

using Matrix = std::vector<double>;

struct Block {
    Block(const DualRegressionInput& input, int number)
        : first(number * kVoxelsPerBlock), count(static_cast<int>(std::min(kVoxelsPerBlock, input.voxels - first))) {
        const float* data = input.series + first * input.volumes;
        series.assign(data, data + std::int64_t{1} * count * input.volumes);
    }

    std::int64_t first;
    int count;
    Matrix series; // [voxel][volume]
};

// S [St X] of one block, [component][K + T].
Matrix mapProducts(const DualRegressionInput& input, int number) {
    const Block block(input, number);
    const int k = input.components;
    const int columns = k + input.volumes;
    Matrix maps(product(k, block.count));
    for (int c = 0; c < k; ++c) {
        std::copy_n(input.maps + c * input.voxels + block.first, block.count, maps.data() + product(c, block.count));
    }
    Matrix result(product(k, columns));
    blockProduct({maps.data(), block.count}, {maps.data(), block.count, true}, k, k, block.count, false, result.data(),
                 columns);
    blockProduct({maps.data(), block.count}, {block.series.data(), input.volumes}, k, input.volumes, block.count, false,
                 result.data() + k, columns);
    return result;
}

// The first regression: C, [component][volume]; empty for dependent maps.
Matrix coursesOf(const DualRegressionInput& input, WorkerThreads& threads) {
    const int k = input.components;
    const int t = input.volumes;
    std::vector<Matrix> parts(static_cast<std::size_t>(blocksIn(input.voxels)));
    threads.run(static_cast<int>(parts.size()),
                [&](int number) { parts[static_cast<std::size_t>(number)] = mapProducts(input, number); });
    for (std::size_t i = 1; i < parts.size(); ++i) {
        std::transform(parts[0].begin(), parts[0].end(), parts[i].begin(), parts[0].begin(), std::plus());
    }
    Matrix maps(product(k, k));
    Matrix courses(product(k, t));
    for (int c = 0; c < k; ++c) {
        const double* row = parts[0].data() + product(c, k + t);
        std::copy_n(row, k, maps.data() + product(c, k));
        std::copy_n(row + k, t, courses.data() + product(c, t));
    }
    if (!solvePositiveDefinite(maps.data(), k, courses.data(), t)) courses.clear();
    return courses;
}

// Makes every course have mean 0 and variance 1; returns the standard deviations.
std::vector<double> standardise(Matrix& courses, int volumes) {
    std::vector<double> deviations;
    for (auto course = courses.begin(); course != courses.end(); course += volumes) {
        const double mean = std::accumulate(course, course + volumes, 0.0) / volumes;
        double squares = 0.0;
        std::for_each(course, course + volumes, [&](double& value) {
            value -= mean;
            squares += value * value;
        });
        deviations.push_back(std::sqrt(squares / volumes));
        std::for_each(course, course + volumes, [&](double& value) { value /= deviations.back(); });
    }
    return deviations;
}

// (c ct)^-1; empty for dependent courses.
Matrix inverseProducts(const Matrix& courses, int k, int volumes) {
    Matrix products(product(k, k));
    blockProduct({courses.data(), volumes}, {courses.data(), volumes, true}, k, k, volumes, false, products.data(), k);
    Matrix inverse(product(k, k));
    for (int c = 0; c < k; ++c) inverse[product(c, k + 1)] = 1.0;
    if (!solvePositiveDefinite(products.data(), k, inverse.data(), k)) inverse.clear();
    return inverse;
}

struct Squares {
    double all = 0.0;
    double left = 0.0; // by the components
};

// The second regression in the voxels of one block.
Squares regressVoxels(const DualRegressionInput& input, const Matrix& inverse, int number, DualRegression& result) {
    const Block block(input, number);
    const int k = input.components;
    const int t = input.volumes;
    Matrix projections(product(block.count, k));
    Matrix effects(projections.size());
    blockProduct({block.series.data(), t}, {result.courses.data(), t, true}, block.count, k, t, false,
                 projections.data(), k);
    blockProduct({projections.data(), k}, {inverse.data(), k}, block.count, k, k, false, effects.data(), k);
    Squares squares;
    for (int v = 0; v < block.count; ++v) {
        const double* course = block.series.data() + product(v, t);
        const double* effect = effects.data() + product(v, k);
        const double all = std::inner_product(course, course + t, course, 0.0);
        const double explained = std::inner_product(effect, effect + k, projections.data() + product(v, k), 0.0);
        const double left = std::max(all - explained, 0.0);
        squares.all += all;
        squares.left += left;
        for (int c = 0; c < k; ++c) {
            const std::size_t at = product(c, input.voxels) + static_cast<std::size_t>(block.first + v);
            const double error = std::sqrt(left / result.freedom * inverse[product(c, k + 1)]);
            result.effect[at] = static_cast<float>(effect[c]);
            result.z[at] = error > 0.0 ? static_cast<float>(normalDeviate(effect[c] / error, result.freedom)) : 0.0f;
        }
    }
    return squares;
}

} // namespace

std::optional<DualRegression> regressDually(const DualRegressionInput& input, WorkerThreads& threads) {
    const OneBlasThread oneThread;
    DualRegression result;
    result.freedom = input.volumes - 1 - input.lost - input.components;
    if (result.freedom < 1) return std::nullopt;
    result.courses = coursesOf(input, threads);
    if (result.courses.empty()) return std::nullopt;
    result.amplitudes = standardise(result.courses, input.volumes);
    const Matrix inverse = inverseProducts(result.courses, input.components, input.volumes);
    if (inverse.empty()) return std::nullopt;

    result.effect.resize(product(input.components, input.voxels));
    result.z.resize(result.effect.size());
    std::vector<Squares> squares(static_cast<std::size_t>(blocksIn(input.voxels)));
    threads.run(static_cast<int>(squares.size()), [&](int number) {
        squares[static_cast<std::size_t>(number)] = regressVoxels(input, inverse, number, result);
    });
    Squares sum;
    for (const Squares& part : squares) sum = {sum.all + part.all, sum.left + part.left};
    result.explainedPercent = 100.0 * (1.0 - sum.left / sum.all);
    return result;
}

} // namespace zn::headless
