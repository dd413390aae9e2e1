#include "headless/dimension/residual_noise.h"

#include "headless/blas/symmetric_matrix.h"
#include "headless/dimension/noise_edge.h"
#include "headless/dimension/temporal_noise.h"
#include "headless/failure/failure.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace zn::headless {

namespace {

constexpr double kRoundingOfZero = 1e-12;

std::size_t index(int i) {
    return static_cast<std::size_t>(i);
}

void requireSuccess(int info) {
    if (info == 0) return;
    throw Failure(ExitStatus::kOther, "the eigenvalues for --components auto cannot be computed (LAPACK: " +
                                          std::to_string(info) + "); specify the number of components.");
}

double widthOf(double correlation) {
    constexpr double kHighest = 0.999; // 37 voxels
    if (!(correlation > 0.0)) return 0.0;
    return std::sqrt(-2.0 * std::log(2.0) / std::log(std::min(correlation, kHighest)));
}

double sumFrom(const std::vector<double>& values, int first, int end) {
    double sum = 0.0;
    for (int i = first; i < end; ++i) sum += values[index(i)];
    return sum;
}

} // namespace

ResidualNoise::ResidualNoise(const SeriesCovariances& covariances, MatrixProducts& products)
    : products_(products), volumes_(covariances.volumes), voxels_(covariances.voxels), vectors_(covariances.total),
      values_(index(covariances.volumes)), differences_(covariances.total.size()) {
    requireSuccess(symmetricEigenpairs(vectors_.data(), volumes_, values_.data()));
    while (dimensions_ < volumes_ && values_[index(dimensions_)] > kRoundingOfZero * values_[0]) ++dimensions_;
    int axes = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (covariances.differences[axis].empty()) continue;
        ++axes;
        const Matrix along = rotated(covariances.differences[axis]);
        for (int i = 0; i < volumes_; ++i) rough_[axis].push_back(along[index(i) * index(volumes_ + 1)]);
        for (std::size_t i = 0; i < along.size(); ++i) differences_[i] += along[i];
    }
    if (axes == 0) differences_ = rotated(covariances.total); // isolated voxels: their noise is that of the data
    const int order = std::clamp(volumes_ / 12, 2, 8);
    for (int lag = 0; lag <= std::min(order, volumes_ - 1); ++lag) lags_.push_back(rotatedLag(lag));
}

ResidualNoise::Matrix ResidualNoise::rotated(const Matrix& matrix) const {
    Matrix half(matrix.size());
    Matrix result(matrix.size());
    const int n = volumes_;
    products_.multiply(vectors_.data(), matrix.data(), half.data(), n, n, n, false, false);
    products_.multiply(half.data(), vectors_.data(), result.data(), n, n, n, false, true);
    return result;
}

ResidualNoise::Matrix ResidualNoise::rotatedLag(int lag) const {
    Matrix shifted(vectors_.size());
    const int n = volumes_;
    for (int i = 0; i < n; ++i) {
        const double* from = vectors_.data() + std::int64_t{1} * i * n;
        double* to = shifted.data() + std::int64_t{1} * i * n;
        for (int t = 0; t < n; ++t) {
            if (t + lag < n) to[t] += from[t + lag];
            if (lag > 0 && t >= lag) to[t] += from[t - lag];
        }
    }
    Matrix result(vectors_.size());
    products_.multiply(vectors_.data(), shifted.data(), result.data(), n, n, n, false, true);
    return result;
}

double ResidualNoise::sumOfProducts(const Matrix& a, const Matrix& b, int k) const {
    double sum = 0.0;
    for (int i = k; i < dimensions_; ++i) {
        const std::size_t row = index(i) * index(volumes_);
        for (int j = k; j < dimensions_; ++j) sum += a[row + index(j)] * b[row + index(j)];
    }
    return sum;
}

std::vector<double> ResidualNoise::autocovariance(int k) const {
    const std::size_t n = lags_.size();
    std::vector<double> system(n * n);
    std::vector<double> right(n);
    for (std::size_t m = 0; m < n; ++m) {
        right[m] = sumOfProducts(lags_[m], differences_, k);
        for (std::size_t l = 0; l <= m; ++l)
            system[m * n + l] = system[l * n + m] = sumOfProducts(lags_[m], lags_[l], k);
    }
    const bool solved = solvePositiveDefinite(system.data(), static_cast<int>(n), right.data(), 1);
    if (!solved || !(right[0] > 0.0)) return {1.0}; // too few directions are left: as if white
    return right;
}

std::vector<double> ResidualNoise::temporalEigenvalues(const std::vector<double>& correlation, int k) const {
    const int left = dimensions_ - k;
    Matrix toeplitz(vectors_.size());
    for (int i = 0; i < volumes_; ++i) {
        for (int j = 0; j < volumes_; ++j) {
            toeplitz[index(i) * index(volumes_) + index(j)] = correlation[index(std::abs(i - j))];
        }
    }
    const double* rows = vectors_.data() + std::int64_t{1} * k * volumes_;
    std::vector<double> half(index(left) * index(volumes_));
    std::vector<double> seen(index(left) * index(left));
    products_.multiply(rows, toeplitz.data(), half.data(), left, volumes_, volumes_, false, false);
    products_.multiply(half.data(), rows, seen.data(), left, left, volumes_, false, true);
    std::vector<double> values(index(left));
    requireSuccess(symmetricEigenvalues(seen.data(), left, values.data()));
    for (double& value : values) value = std::max(value, 1e-9); // the correlation may be slightly indefinite
    return values;
}

Directions ResidualNoise::leading(int k) const {
    return {k, {vectors_.begin(), vectors_.begin() + std::int64_t{1} * k * volumes_}};
}

NoiseModel ResidualNoise::after(int k) const {
    NoiseModel model;
    const double left = sumFrom(values_, k, dimensions_);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (!rough_[axis].empty()) model.fwhm[axis] = widthOf(1.0 - sumFrom(rough_[axis], k, dimensions_) / left);
    }
    const auto spatial = gaussianSpectrum(model.fwhm);
    double meanSquare = 0.0;
    for (const auto& s : spatial) meanSquare += s.weight * s.value * s.value;
    model.independentVoxels = static_cast<double>(voxels_) / meanSquare;

    const auto correlation = autoregressiveCorrelation(autocovariance(k), volumes_);
    model.correlation = volumes_ > 1 ? correlation[1] : 0.0;
    const auto temporal = temporalEigenvalues(correlation, k);
    const double level = left / sumFrom(temporal, 0, dimensions_ - k);
    model.edge = level * noiseEdge(temporal, spatial, voxels_);
    return model;
}

} // namespace zn::headless
