#include "host/simulated_vtc.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zn::test {

namespace {

// Numbers that are the same on every platform: a 64-bit linear congruential generator (Knuth's MMIX constants).
class Numbers {
public:
    double uniform() {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<double>(state_ >> 11U) / 9007199254740992.0;
    }
    // Sum of twelve uniforms: close enough to a normal number, without a library's logarithm.
    double normal() {
        double sum = -6.0;
        for (int i = 0; i < 12; ++i) sum += uniform();
        return sum;
    }
    double peaked() {
        const double x = normal();
        return x * x * x;
    }

private:
    std::uint64_t state_ = 20260;
};

} // namespace

SimulatedSources giveSimulatedVtc(ScriptedHost& host, int x, int y, int z, int volumes, int sources) {
    host.setGrid(x, y, z);
    host.header.validity = 0;
    host.header.volumes = volumes;
    host.header.repetitionTime = 2000;
    host.header.dataType = kFloatData;

    Numbers numbers;
    SimulatedSources truth;
    const auto voxels = static_cast<std::size_t>(x) * static_cast<std::size_t>(y) * static_cast<std::size_t>(z);
    truth.maps.assign(static_cast<std::size_t>(sources), std::vector<double>(voxels));
    truth.timeCourses.assign(truth.maps.size(), std::vector<double>(static_cast<std::size_t>(volumes)));
    for (auto& map : truth.maps) std::generate(map.begin(), map.end(), [&] { return numbers.peaked(); });
    for (auto& course : truth.timeCourses) {
        std::generate(course.begin(), course.end(), [&] { return numbers.normal(); });
    }

    host.floats.clear();
    for (std::size_t v = 0; v < voxels; ++v) {
        for (std::size_t t = 0; t < static_cast<std::size_t>(volumes); ++t) {
            double value = 1000.0 + 0.05 * numbers.normal();
            for (std::size_t s = 0; s < truth.maps.size(); ++s) value += truth.maps[s][v] * truth.timeCourses[s][t];
            host.floats.push_back(static_cast<float>(value));
        }
    }
    return truth;
}

double absoluteCorrelation(const std::vector<double>& a, const std::vector<double>& b) {
    const auto n = static_cast<double>(a.size());
    double sumA = 0, sumB = 0, sumAA = 0, sumBB = 0, sumAB = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sumA += a[i];
        sumB += b[i];
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        const double da = a[i] - sumA / n;
        const double db = b[i] - sumB / n;
        sumAA += da * da;
        sumBB += db * db;
        sumAB += da * db;
    }
    return std::fabs(sumAB) / std::sqrt(sumAA * sumBB);
}

std::vector<double> recoveredMaps(const ScriptedHost& host, const SimulatedSources& sources) {
    std::vector<double> best;
    for (const auto& source : sources.maps) {
        double highest = 0.0;
        for (const auto& map : host.maps) {
            std::vector<double> inside;
            std::vector<double> truth;
            for (std::size_t g = 0; g < map.voxels.size(); ++g) {
                if (host.mask && (*host.mask)[g] == 0) continue;
                inside.push_back(static_cast<double>(map.voxels[g]));
                truth.push_back(source[g]);
            }
            highest = std::max(highest, absoluteCorrelation(inside, truth));
        }
        best.push_back(highest);
    }
    return best;
}

} // namespace zn::test
