#pragma once

#include "headless/denoise/denoising.h"

#include <string>
#include <vector>

namespace zn::headless {

/// What became of a component, or of the confounds or cosines together.
struct RemovedPart {
    std::string name; ///< "ICA_03", "confounds" or "high_pass"
    bool removed = false;
    std::string label;           ///< as in Verdict
    std::string reason;          ///< as in Verdict; for confounds and cosines, what they are
    double removedPercent = 0.0; ///< of the variance over time in the mask; 0 where nothing is removed
};

/// All components in their order, then confounds and cosines, if there are any.
std::vector<RemovedPart> removedParts(const Denoising& run);

} // namespace zn::headless
