#pragma once

#include "headless/simulate/brain.h"
#include "headless/simulate/simulate_options.h"
#include "headless/simulate/source_maps.h"
#include "headless/simulate/source_time_course.h"

#include <functional>
#include <span>
#include <vector>

namespace zn::headless {

/// One source: intensity(voxel, t) gains amplitude * weight(voxel) * values(t).
struct Source {
    SourceMap map;
    SourceTimeCourse timeCourse;
    double amplitude = 0.0; ///< standard deviation over time at full weight, in units of the image
};

/// A simulated measurement: brain, sources and how much noise, all decided by the options alone.
struct Sample {
    Brain brain;
    std::vector<Source> sources;
    double secondsPerVolume = 2.0;
    double noise = 0.0; ///< standard deviation inside the brain, in units of the image
    std::uint64_t noiseSeed = 0;
};

Sample makeSample(const SimulateOptions& options);

/// Makes the volumes of the measurement one after another, x fastest, rounded to whole numbers.
void makeVolumes(const Sample& sample, const std::function<void(std::span<const std::int16_t>)>& use);

} // namespace zn::headless
