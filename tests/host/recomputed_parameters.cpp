#include "host/recomputed_parameters.h"

#include "unit/fingerprint/literal_labelling.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <numbers>

namespace zn::test {

namespace {

using Column = std::vector<double>;

double meanOf(const Column& x) {
    double sum = 0;
    for (double value : x) sum += value;
    return sum / static_cast<double>(x.size());
}

double deviationOf(const Column& x) {
    double sum = 0;
    for (double value : x) sum += (value - meanOf(x)) * (value - meanOf(x));
    return std::sqrt(sum / static_cast<double>(x.size() - 1));
}

Column standardised(Column x) {
    const double mean = meanOf(x);
    const double sd = deviationOf(x);
    for (double& value : x) value = (value - mean) / sd;
    return x;
}

// The last value counts in mean and deviation but not in the sum.
double kurtosisOf(const Column& x) {
    const Column z = standardised(x);
    double sum = 0;
    for (std::size_t i = 0; i + 1 < z.size(); ++i) sum += std::pow(z[i], 4);
    return sum / static_cast<double>(z.size()) - 3;
}

// The last value enters the sum unchanged.
double skewnessOf(const Column& x) {
    const double mean = meanOf(x);
    double sum = x.back();
    for (std::size_t i = 0; i + 1 < x.size(); ++i) sum += std::pow(x[i] - mean, 3);
    return sum / static_cast<double>(x.size()) / std::pow(deviationOf(x), 3);
}

double entropyOfCounts(const std::vector<int>& counts, std::size_t values) {
    double entropy = 0;
    for (int count : counts) {
        const double p = count / static_cast<double>(values);
        if (count > 0) entropy -= p * std::log2(p);
    }
    return entropy;
}

// Entropy in bits of the relative frequencies in bins of equal width; a bin includes its upper edge. The edges are
// accumulated in single precision, so that the largest value may lie above the last one and is then not counted.
double entropyOf(const Column& x, std::size_t bins) {
    const auto [low, high] = std::minmax_element(x.begin(), x.end());
    const float width = (static_cast<float>(*high) - static_cast<float>(*low)) / static_cast<float>(bins);
    std::vector<int> counts(bins, 0);
    for (double value : x) {
        float edge = static_cast<float>(*low) + width;
        for (std::size_t b = 0; b < bins; ++b, edge += width) {
            if (static_cast<float>(value) > edge) continue;
            ++counts[b];
            break;
        }
    }
    return entropyOfCounts(counts, x.size());
}

// The same with exact edges, the largest value counted or not.
double entropyWithout(bool largestValue, const Column& x, std::size_t bins) {
    const auto [low, high] = std::minmax_element(x.begin(), x.end());
    const double width = (*high - *low) / static_cast<double>(bins);
    std::vector<int> counts(bins, 0);
    for (double value : x) {
        if (largestValue && value == *high) continue;
        const auto bin = static_cast<std::size_t>(std::max(0.0, std::ceil((value - *low) / width) - 1));
        ++counts[std::min(bin, bins - 1)];
    }
    return entropyOfCounts(counts, x.size());
}

double lagOneOf(const Column& x) {
    const Column z = standardised(x);
    double products = 0;
    double squares = 0;
    for (std::size_t t = 0; t + 1 < z.size(); ++t) {
        products += z[t] * z[t + 1];
        squares += z[t] * z[t];
    }
    return std::fabs(products / squares);
}

// Averaged periodogram by the definition of the Fourier transform: segments of T / 4.5 samples that overlap by half,
// Hamming window, 256 points.
Column spectrumOf(const Column& x) {
    constexpr std::size_t points = 256;
    const Column z = standardised(x);
    const auto length = static_cast<std::size_t>(static_cast<double>(z.size()) / 4.5);
    const std::size_t overlap = length / 2;
    const std::size_t segments = (z.size() - overlap) / (length - overlap);
    Column power(points / 2 + 1, 0.0);
    for (std::size_t f = 0; f < power.size(); ++f) {
        for (std::size_t s = 0; s < segments; ++s) {
            std::complex<double> sum = 0;
            for (std::size_t i = 0; i < length; ++i) {
                const double phase = 2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(length - 1);
                const double window = 0.54 - 0.46 * std::cos(phase);
                const double angle = -2 * std::numbers::pi * static_cast<double>(f * i) / points;
                sum += std::polar(z[s * (length - overlap) + i] * window, angle);
            }
            power[f] += std::norm(sum); // the window's power is the same for all and cancels in the fractions
        }
    }
    return power;
}

// Fractions of the power in the bands that end at the columns nearest to 0.032, 0.08, 0.2 and 0.4 of the Nyquist
// frequency. For a TR of at most 5 s.
Column bandsOf(const Column& power, int trSeconds) {
    const double step = 1.0 / trSeconds / 256;
    const double nyquist = 0.5 / trSeconds;
    double total = 0;
    for (double value : power) total += value;
    Column bands;
    std::size_t column = 0;
    for (double edge : {0.032, 0.08, 0.2, 0.4, 1.0}) {
        double sum = 0;
        for (; column < power.size() && static_cast<double>(column) <= std::round(edge * nyquist / step); ++column) {
            sum += power[column];
        }
        bands.push_back(sum / total);
    }
    return bands;
}

double clusteringOf(const Column& map, const std::vector<std::vector<int>>& coordinates, double zThreshold,
                    int minClusterSize) {
    double above = 0;
    double clustered = 0;
    for (double sign : {1.0, -1.0}) {
        std::vector<Voxel> half;
        for (std::size_t v = 0; v < map.size(); ++v) {
            const auto& position = coordinates[v];
            half.push_back({static_cast<float>(std::max(0.0, sign * map[v])), position[0], position[1], position[2]});
            above += sign * map[v] > zThreshold ? 1 : 0;
        }
        for (int flag : literalLabelling(half, static_cast<float>(zThreshold), minClusterSize).flags) {
            clustered += flag > 0 ? 1 : 0;
        }
    }
    return clustered / above;
}

double largestOf(const Column& x) {
    return *std::max_element(x.begin(), x.end());
}

double smallestOf(const Column& x) {
    return *std::min_element(x.begin(), x.end());
}

// Applies `change` to every value, then rescales from 0 for the smallest to 1 for the largest.
Column toUnitRange(Column x, const std::function<double(double)>& change) {
    for (double& value : x) value = change(value);
    const double low = smallestOf(x);
    const double high = largestOf(x);
    for (double& value : x) value = (value - low) / (high - low);
    return x;
}

Column overLargest(Column x) {
    const double largest = largestOf(x);
    for (double& value : x) value /= largest;
    return x;
}

Column perComponent(const Rows& rows, const std::function<double(const Column&)>& feature) {
    Column values;
    for (const auto& row : rows) values.push_back(feature(row));
    return values;
}

} // namespace

std::vector<double> temporalEntropies(const Rows& timeCourses, unsigned lost) {
    Column entropies;
    for (std::size_t k = 0; k < timeCourses.size(); ++k) {
        entropies.push_back(entropyWithout((lost >> k & 1U) != 0, timeCourses[k], timeCourses[k].size() / 10));
    }
    return toUnitRange(entropies, [](double x) { return std::exp(x); });
}

Rows recomputedParameters(const Rows& maps, const std::vector<std::vector<int>>& coordinates, const Rows& timeCourses,
                          int trSeconds, double zThreshold, int minClusterSize) {
    const auto absoluteLog = [](double x) { return std::fabs(std::log(x)); };
    const std::size_t voxelBins = maps.front().size() / 100;
    Rows columns;
    columns.push_back(overLargest(perComponent(
        maps, [&](const Column& map) { return clusteringOf(map, coordinates, zThreshold, minClusterSize); })));
    columns.push_back(toUnitRange(perComponent(maps, skewnessOf), [](double x) { return std::log(std::fabs(x)); }));
    columns.push_back(toUnitRange(perComponent(maps, kurtosisOf), absoluteLog));
    columns.push_back(
        toUnitRange(perComponent(maps, [&](const Column& map) { return entropyOf(map, voxelBins); }), absoluteLog));
    columns.push_back(perComponent(timeCourses, lagOneOf));
    columns.push_back(temporalEntropies(timeCourses, 0));
    Rows bands;
    for (const auto& x : timeCourses) bands.push_back(overLargest(bandsOf(spectrumOf(x), trSeconds)));
    for (std::size_t b = 0; b < 5; ++b) {
        columns.push_back(overLargest(perComponent(bands, [b](const Column& band) { return band[b]; })));
    }

    Rows rows(maps.size());
    for (std::size_t k = 0; k < rows.size(); ++k) {
        for (const auto& column : columns) rows[k].push_back(column[k]);
    }
    return rows;
}

} // namespace zn::test
