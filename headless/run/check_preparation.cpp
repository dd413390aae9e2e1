#include "headless/run/stages.h"

#include "headless/failure/failure.h"
#include "headless/nifti/voxel_size.h"
#include "headless/prepare/cut_off.h"
#include "headless/prepare/high_pass.h"
#include "headless/text/short_texts.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr double kMostVoxels = 10.0; // of a Gaussian's full width at half maximum

} // namespace

void checkPreparation(Run& run) {
    const PreparationOptions& options = run.options.preparation;
    const auto size = voxelSize(run.functional);
    const double smallest = *std::min_element(size.begin(), size.end());
    if (options.smoothMm > kMostVoxels * smallest) {
        throw Failure(ExitStatus::kInput, "--smooth " + shortNumber(options.smoothMm) +
                                              " mm is more than 10 voxels of " + shortNumber(smallest) +
                                              " mm; give a smaller width in millimetres.");
    }
    if (options.highPassSeconds <= 0.0) return;
    requireCutOff(options.highPassSeconds, run.repetition.seconds);
    run.cosines = cosinesBelow(options.highPassSeconds, run.volumes, run.repetition.seconds);
}

int preparedDimensions(const Run& run) {
    const int means = run.options.preparation.scaling == Scaling::kUnitVariance ? 1 : 0;
    return run.volumes - run.cosines - means;
}

} // namespace zn::headless
