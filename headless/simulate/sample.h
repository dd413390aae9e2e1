#pragma once

#include "headless/simulate/brain.h"
#include "headless/simulate/source_maps.h"
#include "headless/simulate/source_time_course.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace zn::headless {

/// The settings that determine a sample.
struct SimulateOptions {
    std::string size = "small"; ///< one of sizeNames()
    int sources = 8;
    double noisePercent = 1.0; ///< standard deviation as a percentage of the mean signal
    std::uint64_t seed = 1;

    static std::vector<std::string> sizeNames() { return {"tiny", "small", "medium", "large"}; }
};

/// One source: intensity(voxel, t) gains amplitude * weight(voxel) * values(t).
struct Source {
    SourceMap map;
    SourceTimeCourse timeCourse;
    double amplitude = 0.0; ///< standard deviation over time at full weight, in units of the image
};

/// A simulated measurement: brain, sources and noise level, all determined by the options alone.
struct Sample {
    Brain brain;
    std::vector<Source> sources;
    double secondsPerVolume = 2.0;
    double noise = 0.0; ///< standard deviation inside the brain, in units of the image
    std::uint64_t noiseSeed = 0;
};

Sample makeSample(const SimulateOptions& options);

/// Makes the volumes of the measurement one after another, x fastest, rounded to integers.
void makeVolumes(const Sample& sample, const std::function<void(std::span<const std::int16_t>)>& use);

} // namespace zn::headless
