#include "headless/dimension/temporal_eigenvalues.h"

#include "headless/blas/symmetric_matrix.h"
#include "headless/failure/failure.h"

#include <algorithm>
#include <string>

namespace zn::headless {

namespace {

constexpr std::size_t kBlock = 1024; // voxels

// Calls use(rows, count) with the time courses in the mask in double precision, up to kBlock at a time.
template <class Value, class Use>
void forBlocks(const Value* values, const TimeSeries& series, const std::vector<unsigned char>& mask, Use use) {
    const auto volumes = static_cast<std::size_t>(series.volumes);
    std::vector<double> block(kBlock * volumes);
    std::size_t count = 0;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        if (mask[v] == 0) continue;
        std::copy_n(values + v * volumes, volumes, block.data() + count * volumes);
        if (++count < kBlock) continue;
        use(block.data(), count);
        count = 0;
    }
    if (count > 0) use(block.data(), count);
}

template <class Value>
std::vector<double> covariance(const Value* values, const TimeSeries& series, const std::vector<unsigned char>& mask) {
    const auto volumes = static_cast<std::size_t>(series.volumes);
    const auto voxels = static_cast<double>(mask.size()) - static_cast<double>(std::count(mask.begin(), mask.end(), 0));
    std::vector<double> mean(volumes);
    forBlocks(values, series, mask, [&](const double* rows, std::size_t count) {
        for (std::size_t v = 0; v < count; ++v) {
            for (std::size_t t = 0; t < volumes; ++t) mean[t] += rows[v * volumes + t];
        }
    });
    for (double& value : mean) value /= voxels;

    std::vector<double> result(volumes * volumes);
    forBlocks(values, series, mask, [&](double* rows, std::size_t count) {
        for (std::size_t v = 0; v < count; ++v) {
            for (std::size_t t = 0; t < volumes; ++t) rows[v * volumes + t] -= mean[t];
        }
        addCrossProducts(rows, static_cast<int>(count), series.volumes, 1.0 / voxels, result.data());
    });
    return result;
}

} // namespace

std::vector<double> temporalEigenvalues(const TimeSeries& series, const std::vector<unsigned char>& mask) {
    std::vector<double> matrix = series.isFloat() ? covariance(series.floats.get(), series, mask)
                                                  : covariance(series.shorts.get(), series, mask);
    std::vector<double> values(static_cast<std::size_t>(series.volumes));
    const int info = symmetricEigenvalues(matrix.data(), series.volumes, values.data());
    if (info != 0) {
        throw Failure(ExitStatus::kOther, "the eigenvalues for --components auto cannot be computed (LAPACK dsyev: " +
                                              std::to_string(info) + "); specify the number of components.");
    }
    return values;
}

} // namespace zn::headless
