#include "headless/measures/component_courses.h"

#include "headless/blas/symmetric_matrix.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zn::headless {

namespace {

constexpr std::size_t kVoxelsPerBlock = 2048; // a block of the data stays in the cache while it is used

std::vector<std::size_t> voxelsIn(const std::vector<unsigned char>& mask) {
    std::vector<std::size_t> voxels;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        if (mask[v] != 0) voxels.push_back(v);
    }
    return voxels;
}

// The sums over voxels from which everything else follows. K components, T volumes.
struct Sums {
    std::vector<double> mapsTimesMaps; // S St, K x K
    std::vector<double> mapsTimesData; // S X, K x T
    double squares = 0.0;              // of X', the data without the means over voxels and over time
};

template <class Value> class Fit {
public:
    Fit(const Value* values, std::size_t volumes, const std::vector<unsigned char>& mask, const VolumeMaps& maps)
        : values_(values), volumes_(volumes), voxels_(voxelsIn(mask)), maps_(maps.maps()), means_(volumes) {
        for (const std::size_t v : voxels_) {
            for (std::size_t t = 0; t < volumes_; ++t) means_[t] += static_cast<double>(course(v)[t]);
        }
        for (double& mean : means_) mean /= static_cast<double>(voxels_.size());
    }

    const std::vector<double>& spatialMeans() const { return means_; }

    Sums sums(MatrixProducts& products) const {
        const std::size_t k = maps_.size();
        Sums sums{std::vector<double>(k * k), std::vector<double>(k * volumes_)};
        std::vector<float> data(kVoxelsPerBlock * volumes_);
        std::vector<float> maps(kVoxelsPerBlock * k);
        std::vector<float> part(k * std::max(k, volumes_));
        for (std::size_t first = 0; first < voxels_.size(); first += kVoxelsPerBlock) {
            const std::size_t count = std::min(kVoxelsPerBlock, voxels_.size() - first);
            for (std::size_t i = 0; i < count; ++i) {
                for (std::size_t c = 0; c < k; ++c) maps[i * k + c] = maps_[c].values[voxels_[first + i]];
                sums.squares += centre(voxels_[first + i], data.data() + i * volumes_);
            }
            addProduct(products, maps, maps, k, count, part, sums.mapsTimesMaps);
            addProduct(products, maps, data, volumes_, count, part, sums.mapsTimesData);
        }
        return sums;
    }

private:
    const Value* course(std::size_t voxel) const { return values_ + voxel * volumes_; }

    // One row of X; returns the sum of squares about its mean.
    double centre(std::size_t voxel, float* row) const {
        double sum = 0.0;
        double squares = 0.0;
        for (std::size_t t = 0; t < volumes_; ++t) {
            const double value = static_cast<double>(course(voxel)[t]) - means_[t];
            row[t] = static_cast<float>(value);
            sum += value;
            squares += value * value;
        }
        return squares - sum * sum / static_cast<double>(volumes_);
    }

    // total += at b, for `count` rows of a (K columns) and b
    void addProduct(MatrixProducts& products, const std::vector<float>& a, const std::vector<float>& b,
                    std::size_t columns, std::size_t count, std::vector<float>& part,
                    std::vector<double>& total) const {
        products.multiply(a.data(), b.data(), part.data(), static_cast<int>(maps_.size()), static_cast<int>(columns),
                          static_cast<int>(count), true, false);
        for (std::size_t i = 0; i < total.size(); ++i) total[i] += static_cast<double>(part[i]);
    }

    const Value* values_;
    std::size_t volumes_;
    std::vector<std::size_t> voxels_;
    const std::vector<VolumeMap>& maps_;
    std::vector<double> means_;
};

double squaresAboutMean(const double* values, std::size_t count) {
    double mean = 0.0;
    for (std::size_t t = 0; t < count; ++t) mean += values[t] / static_cast<double>(count);
    double squares = 0.0;
    for (std::size_t t = 0; t < count; ++t) squares += (values[t] - mean) * (values[t] - mean);
    return squares;
}

template <class Value>
ComponentCourses fit(const Value* values, std::size_t volumes, const std::vector<unsigned char>& mask,
                     const VolumeMaps& maps, MatrixProducts& products) {
    const Fit<Value> fit(values, volumes, mask, maps);
    Sums sums = fit.sums(products);
    const std::size_t k = maps.maps().size();
    std::vector<double> mapSquares(k);
    for (std::size_t c = 0; c < k; ++c) mapSquares[c] = sums.mapsTimesMaps[c * k + c];
    const bool finite = std::all_of(sums.mapsTimesMaps.begin(), sums.mapsTimesMaps.end(),
                                    [](double value) { return std::isfinite(value); });
    std::vector<double>& courses = sums.mapsTimesData;
    if (!finite || !solvePositiveDefinite(sums.mapsTimesMaps.data(), static_cast<int>(k), courses.data(),
                                          static_cast<int>(volumes))) {
        std::fill(courses.begin(), courses.end(), NAN);
    }

    ComponentCourses result;
    for (const double mean : fit.spatialMeans()) result.spatialMean.push_back(static_cast<float>(mean));
    for (std::size_t c = 0; c < k; ++c) {
        const double* course = courses.data() + c * volumes;
        std::vector<float>& written = result.courses.emplace_back();
        for (std::size_t t = 0; t < volumes; ++t) written.push_back(static_cast<float>(course[t]));
        const double explained = mapSquares[c] * squaresAboutMean(course, volumes);
        result.explainedPercent.push_back(sums.squares > 0.0 ? 100.0 * explained / sums.squares : NAN);
    }
    return result;
}

} // namespace

ComponentCourses fitCourses(const TimeSeries& series, const std::vector<unsigned char>& mask, const VolumeMaps& maps,
                            MatrixProducts& products) {
    const auto volumes = static_cast<std::size_t>(series.volumes);
    return series.isFloat() ? fit(series.floats.get(), volumes, mask, maps, products)
                            : fit(series.shorts.get(), volumes, mask, maps, products);
}

} // namespace zn::headless
