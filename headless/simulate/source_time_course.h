#pragma once

#include "headless/simulate/random_numbers.h"

#include <string>
#include <vector>

namespace zn::headless {

/// The time course of a source: mean 0, standard deviation 1 over the volumes.
struct SourceTimeCourse {
    std::string kind;
    bool isTask = false; ///< follows a stimulus, so it belongs in the design matrix
    std::vector<double> values;
};

/// The time course of source `index` (from 0). In turn: stimulus blocks, scanner drift, cardiac pulse (aliased by the
/// sampling), a second kind of blocks, breathing, brief events, head movement; from the eighth on, slow spontaneous
/// fluctuations (0.01 to 0.1 Hz). Stimuli are convolved with a haemodynamic response.
SourceTimeCourse makeTimeCourse(int index, int volumes, double secondsPerVolume, RandomNumbers& random);

} // namespace zn::headless
