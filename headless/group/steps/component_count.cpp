#include "headless/group/steps/component_count.h"

#include "headless/blas/one_blas_thread.h"
#include "headless/dimension/component_estimate.h"
#include "headless/prepare/high_pass.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

// C <- (I - u ut) C (I - u ut) for a symmetric C and a unit vector u.
void removeDirection(std::vector<double>& matrix, const double* u, std::size_t order) {
    std::vector<double> product(order); // C u
    double inner = 0.0;                 // ut C u
    for (std::size_t i = 0; i < order; ++i) {
        for (std::size_t j = 0; j < order; ++j) product[i] += matrix[i * order + j] * u[j];
        inner += u[i] * product[i];
    }
    for (std::size_t i = 0; i < order; ++i) {
        for (std::size_t j = 0; j < order; ++j) {
            matrix[i * order + j] += inner * u[i] * u[j] - u[i] * product[j] - product[i] * u[j];
        }
    }
}

// What rounding to single precision left in the directions that the preparation removed would count as noise.
void removeLostDirections(std::vector<double>& matrix, const PreparedRun& run) {
    if (matrix.empty()) return; // an axis without neighbours
    const auto order = static_cast<std::size_t>(run.volumes);
    const std::vector<double> constant(order, 1.0 / std::sqrt(static_cast<double>(order)));
    removeDirection(matrix, constant.data(), order);
    const std::vector<double> filter = cosines(run.lost, run.volumes);
    for (std::size_t k = 0; k < static_cast<std::size_t>(run.lost); ++k) {
        removeDirection(matrix, filter.data() + k * order, order);
    }
}

} // namespace

int componentsOfRun(const GroupStudy& study, const PreparedRun& run, WorkerThreads& threads) {
    const OneBlasThread oneThread;
    const auto covariances = [&](const Directions& leading) {
        SeriesCovariances result =
            seriesCovariances(run.series, run.volumes, study.grid.size, study.mask, threads, leading);
        removeLostDirections(result.total, run);
        for (auto& differences : result.differences) removeLostDirections(differences, run);
        return result;
    };
    MatrixProducts products(threads.threads());
    return estimateComponents(covariances, products).chosen();
}

int componentsOfGroup(std::vector<int> estimates, int most) {
    std::sort(estimates.begin(), estimates.end());
    const std::size_t middle = estimates.size() / 2;
    const int upper = estimates[middle];
    const int lower = estimates.size() % 2 == 1 ? upper : estimates[middle - 1];
    return std::min(std::max((lower + upper + 1) / 2, 2), most);
}

} // namespace zn::headless
