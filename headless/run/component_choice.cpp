#include "headless/run/component_choice.h"

#include "headless/dimension/temporal_eigenvalues.h"
#include "headless/run/run_inputs.h"

#include <cstdio>

namespace zn::headless {

ComponentEstimate settleComponents(const RunMask& mask, RunOptions& options, Session& session) {
    ComponentEstimate estimate = estimateComponents(temporalEigenvalues(session.series, mask.voxels), mask.count);
    options.firstEigenvalue = 1;
    options.lastEigenvalue = estimate.chosen();
    setEigenvalueRange(options, session.dialog);
    return estimate;
}

std::string estimateNote(const ComponentEstimate& estimate) {
    char text[160];
    std::snprintf(text, sizeof text,
                  "Components: MDL %d (taken), Laplace %d, optimal threshold %d, at %.0f effective samples.",
                  estimate.byMdl, estimate.byLaplace, estimate.byThreshold, estimate.effectiveSamples);
    return text;
}

} // namespace zn::headless
