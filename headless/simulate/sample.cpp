#include "headless/simulate/sample.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

constexpr double kMeanSignal = 1000.0;
constexpr double kBackground = 12.0; // outside the head: the magnitude of noise alone

constexpr int kDraws = 20; // per time course; the one least similar to the earlier sources is kept

// Largest absolute correlation with the time courses of the sources so far; all have mean 0 and standard deviation 1.
double similarity(const SourceTimeCourse& course, const std::vector<Source>& sources) {
    double largest = 0.0;
    for (const Source& source : sources) {
        double sum = 0.0;
        for (std::size_t t = 0; t < course.values.size(); ++t) sum += course.values[t] * source.timeCourse.values[t];
        largest = std::max(largest, std::fabs(sum) / static_cast<double>(course.values.size()));
    }
    return largest;
}

SourceTimeCourse drawTimeCourse(const Sample& sample, RandomNumbers& random) {
    const auto index = static_cast<int>(sample.sources.size());
    SourceTimeCourse best = makeTimeCourse(index, sample.brain.volumes, sample.secondsPerVolume, random);
    for (int draw = 1; draw < kDraws; ++draw) {
        SourceTimeCourse other = makeTimeCourse(index, sample.brain.volumes, sample.secondsPerVolume, random);
        if (similarity(other, sample.sources) < similarity(best, sample.sources)) best = std::move(other);
    }
    return best;
}

std::int16_t rounded(double intensity) {
    return static_cast<std::int16_t>(std::lround(std::clamp(intensity, 0.0, 32767.0)));
}

// How strongly every axial slice fluctuates as a whole, in units of the noise: an artefact of real scanners that adds
// structure beyond the sources. Without it, directions of pure noise keep the iteration from converging.
std::vector<double> sliceStrengths(std::size_t slices, RandomNumbers& random) {
    std::vector<double> strengths(slices);
    for (double& strength : strengths) strength = random.uniform(0.25, 0.65);
    return strengths;
}

} // namespace

Sample makeSample(const SimulateOptions& options) {
    RandomNumbers random(options.seed);
    Sample sample;
    sample.brain = makeBrain(options.size);
    for (SourceMap& map : placeSources(sample.brain, options.sources, random)) {
        Source source;
        source.map = std::move(map);
        source.amplitude = kMeanSignal * random.uniform(0.055, 0.065);
        source.timeCourse = drawTimeCourse(sample, random);
        sample.sources.push_back(std::move(source));
    }
    sample.noise = kMeanSignal * options.noisePercent / 100.0;
    sample.noiseSeed = options.seed + 0x9E3779B97F4A7C15U; // the noise stays the same when only the sources change
    return sample;
}

void makeVolumes(const Sample& sample, const std::function<void(std::span<const std::int16_t>)>& use) {
    RandomNumbers random(sample.noiseSeed);
    const Brain& brain = sample.brain;
    std::vector<double> intensity(brain.baseline.size());
    std::vector<std::int16_t> volume(brain.baseline.size());
    const std::vector<double> slices = sliceStrengths(static_cast<std::size_t>(brain.size[2]), random);
    const std::size_t inSlice = volume.size() / slices.size();
    for (std::size_t t = 0; t < static_cast<std::size_t>(brain.volumes); ++t) {
        std::copy(brain.baseline.begin(), brain.baseline.end(), intensity.begin());
        for (const Source& source : sample.sources) {
            const double now = source.amplitude * source.timeCourse.values[t];
            for (const auto& entry : source.map.entries) {
                intensity[static_cast<std::size_t>(entry.voxel)] += now * static_cast<double>(entry.weight);
            }
        }
        double slice = 0.0;
        for (std::size_t v = 0; v < volume.size(); ++v) {
            if (v % inSlice == 0) slice = slices[v / inSlice] * random.normal();
            const double noise = slice + random.normal();
            volume[v] =
                rounded(brain.mask[v] != 0 ? intensity[v] + sample.noise * noise : std::fabs(kBackground * noise));
        }
        use(volume);
    }
}

} // namespace zn::headless
