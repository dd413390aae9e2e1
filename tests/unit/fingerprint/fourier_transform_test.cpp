#include "fingerprint/fourier_transform.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace zn::test {
namespace {

using Points = std::vector<std::complex<double>>;

Points randomPoints(int n) {
    const Series re = noise(n, 1);
    const Series im = noise(n, 2);
    Points points;
    for (std::size_t j = 0; j < re.size(); ++j) points.emplace_back(re[j], im[j]);
    return points;
}

Points transformed(const Points& points) {
    std::vector<double> re;
    std::vector<double> im;
    for (const auto& point : points) {
        re.push_back(point.real());
        im.push_back(point.imag());
    }
    FourierTransform(static_cast<int>(points.size())).transform(re.data(), im.data());
    Points result;
    for (std::size_t j = 0; j < re.size(); ++j) result.emplace_back(re[j], im[j]);
    return result;
}

// The definition, term by term.
Points directTransform(const Points& points) {
    const std::size_t n = points.size();
    Points result(n);
    for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t j = 0; j < n; ++j) {
            const double angle = -2 * std::numbers::pi * static_cast<double>(j * k % n) / static_cast<double>(n);
            result[k] += points[j] * std::polar(1.0, angle);
        }
    }
    return result;
}

TEST(FourierTransform, EqualsTheDirectSum) {
    for (int n = 1; n <= 1024; n *= 2) {
        const Points points = randomPoints(n);
        const Points result = transformed(points);
        const Points expected = directTransform(points);
        for (std::size_t k = 0; k < result.size(); ++k) {
            EXPECT_LT(std::abs(result[k] - expected[k]), 1e-11) << n << " points, " << k; // sums of up to 1024 terms
        }
    }
}

TEST(FourierTransform, OfACosineIsTwoLines) {
    Points cosine;
    for (int j = 0; j < 16; ++j) cosine.emplace_back(std::cos(2 * std::numbers::pi * 3 * j / 16), 0.0);
    const Points lines = transformed(cosine);
    for (std::size_t k = 0; k < 16; ++k) EXPECT_NEAR(std::abs(lines[k]), k == 3 || k == 13 ? 8.0 : 0.0, 1e-13) << k;
}

TEST(FourierTransform, CanBeUsedAgain) {
    const FourierTransform fourier(8);
    for (int round = 0; round < 2; ++round) {
        std::vector<double> re(8, 1.0);
        std::vector<double> im(8, 0.0);
        fourier.transform(re.data(), im.data());
        EXPECT_NEAR(re[0], 8.0, 1e-14);
        EXPECT_NEAR(re[3], 0.0, 1e-14);
    }
}

} // namespace
} // namespace zn::test
