#pragma once

#include "headless/simulate/sample.h"

#include <string>
#include <vector>

namespace zn::headless {

/// A simulated study: the same sources in every subject, each with courses of its own and its own strength.
struct GroupSample {
    Sample shared;                              ///< brain, maps and mean amplitudes; its courses are not used
    std::vector<std::vector<double>> strengths; ///< [subject][source]: factor of the source's amplitude, 0.4 to 1.6
    std::uint64_t seed = 0;

    int subjects() const { return static_cast<int>(strengths.size()); }
};

/// "sub-01"; as many digits as the last subject needs, at least two.
std::string subjectName(int subject, int subjects);

GroupSample makeGroupSample(const SimulateOptions& options, int subjects);

/// The measurement of one subject, counted from 0: slow fluctuations as courses, all with mean 0 and variance 1, and
/// its own noise. Depends on nothing but the options and the subject's number.
Sample subjectSample(const GroupSample& group, int subject);

} // namespace zn::headless
