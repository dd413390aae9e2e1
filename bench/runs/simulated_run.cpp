#include "runs/simulated_run.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace zn::bench {

namespace {

using Generator = std::mt19937_64;

double uniform(Generator& generator, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(generator);
}

OffsetMatrix<int> cubicGrid(int voxels, int side) {
    OffsetMatrix<int> positions(0, voxels - 1, 0, 2);
    for (int v = 0; v < voxels; ++v) {
        positions[v][0] = v % side;
        positions[v][1] = v / side % side;
        positions[v][2] = v / side / side;
    }
    return positions;
}

// Adds a blob of the given height, cut off where it falls below a hundredth of that.
void addBlob(Generator& generator, const int* const* positions, int voxels, int side, double height, float* source) {
    double centre[3];
    for (double& c : centre) c = uniform(generator, 0.1 * side, 0.9 * side);
    const double radius = uniform(generator, 0.05, 0.10) * side;
    for (int v = 0; v < voxels; ++v) {
        double square = 0.0;
        for (int axis = 0; axis < 3; ++axis) square += std::pow(positions[v][axis] - centre[axis], 2);
        const double fraction = std::exp(-0.5 * square / (radius * radius));
        if (fraction > 0.01) source[v] += static_cast<float>(height * fraction);
    }
}

void toZeroMeanUnitVariance(std::vector<double>& course) {
    const auto count = static_cast<double>(course.size());
    double mean = 0.0;
    for (const double value : course) mean += value / count;
    double variance = 0.0;
    for (double& value : course) {
        value -= mean;
        variance += value * value / count;
    }
    for (double& value : course) value /= std::sqrt(variance);
}

std::vector<double> timeCourse(Generator& generator, int volumes) {
    constexpr double kMemory = 0.8; // correlation of neighbouring volumes
    const double period = uniform(generator, 15.0, 45.0);
    const double phase = uniform(generator, 0.0, period);
    std::normal_distribution<double> normal;
    std::vector<double> course(static_cast<std::size_t>(volumes));
    double slow = normal(generator);
    double response = 0.0; // to the blocks, which it follows with a delay of a few volumes
    for (int t = 0; t < volumes; ++t) {
        slow = kMemory * slow + std::sqrt(1.0 - kMemory * kMemory) * normal(generator);
        const bool on = std::fmod(t + phase, period) < period / 2.0;
        response += 0.4 * ((on ? 1.0 : 0.0) - response);
        course[static_cast<std::size_t>(t)] = slow + 1.5 * response;
    }
    toZeroMeanUnitVariance(course);
    return course;
}

void addWhiteNoise(Generator& generator, ZeroedBlock& data, int voxels, int volumes) {
    std::normal_distribution<double> normal;
    for (int v = 0; v < voxels; ++v) {
        for (int t = 0; t < volumes; ++t) data.row(v)[t] += normal(generator);
    }
}

void addSource(const float* source, const std::vector<double>& course, ZeroedBlock& data, int voxels) {
    for (int v = 0; v < voxels; ++v) {
        if (source[v] == 0.0f) continue;
        double* x = data.row(v);
        for (std::size_t t = 0; t < course.size(); ++t) x[t] += static_cast<double>(source[v]) * course[t];
    }
}

void removeSpatialMean(ZeroedBlock& data, int voxels, int volumes) {
    std::vector<double> mean(static_cast<std::size_t>(volumes));
    for (int v = 0; v < voxels; ++v) {
        for (std::size_t t = 0; t < mean.size(); ++t) mean[t] += data.row(v)[t] / voxels;
    }
    for (int v = 0; v < voxels; ++v) {
        for (std::size_t t = 0; t < mean.size(); ++t) data.row(v)[t] -= mean[t];
    }
}

} // namespace

SimulatedRun simulateRun(int voxels, int volumes, int sources, unsigned seed) {
    const int side = static_cast<int>(std::ceil(std::cbrt(voxels)));
    Generator generator(seed);
    SimulatedRun run{ZeroedBlock(voxels, volumes), OffsetMatrix<float>(0, sources - 1, 0, voxels - 1),
                     cubicGrid(voxels, side)};
    run.sources.fill(0.0f);
    for (int k = 0; k < sources; ++k) {
        addBlob(generator, run.coordinates.get(), voxels, side, uniform(generator, 8.0, 12.0), run.sources[k]);
        addBlob(generator, run.coordinates.get(), voxels, side, uniform(generator, 5.0, 9.0), run.sources[k]);
        addSource(run.sources[k], timeCourse(generator, volumes), run.data, voxels);
    }
    addWhiteNoise(generator, run.data, voxels, volumes);
    removeSpatialMean(run.data, voxels, volumes);
    return run;
}

} // namespace zn::bench
