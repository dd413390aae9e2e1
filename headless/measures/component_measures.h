#pragma once

#include "headless/confounds/confound_match.h"
#include "headless/measures/map_moments.h"

#include <cmath>

namespace zn::headless {

/// What is known about a component beyond the plug-in's sixteen parameters; nothing here is rescaled across components.
struct ComponentMeasures {
    double explainedPercent = NAN; ///< of the variance over time; see component_courses.h
    MapMoments moments{NAN, NAN};  ///< of the map over the analysed voxels
    ConfoundMatch confound;        ///< none without confounds
};

} // namespace zn::headless
