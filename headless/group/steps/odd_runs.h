#pragma once

#include "headless/group/steps/group_options.h"
#include "headless/nifti/image_header.h"

#include <string>
#include <vector>

namespace zn::headless {

/// A listed run with what its header says.
struct RunHeader {
    ListedRun listed;
    ImageHeader header;
    double secondsPerVolume = 0.0;
};

/// Throws Failure (kInput), naming the runs that differ from most others, unless all have one grid, one repetition time
/// (to a millisecond) and one space (the entity space-LABEL in their names).
void requireOneKind(const std::vector<RunHeader>& runs);

/// "sub-01, sub-02 and 5 more"
std::string listOfNames(const std::vector<std::string>& names);

} // namespace zn::headless
