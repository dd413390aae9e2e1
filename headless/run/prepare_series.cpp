#include "headless/run/stages.h"

#include "headless/failure/failure.h"
#include "headless/nifti/voxel_size.h"
#include "headless/prepare/high_pass.h"
#include "headless/prepare/scale_voxels.h"
#include "headless/prepare/smooth_series.h"
#include "headless/prepare/smoothness.h"
#include "headless/run/smoothing_width.h"
#include "headless/text/short_texts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

namespace zn::headless {

namespace {

std::string millimetres(double width) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3g mm", width);
    return text;
}

// The width to smooth with, in millimetres, from the smoothness of the data.
double chooseWidth(Run& run, const MaskedSeries& series, WorkerThreads& threads) {
    const std::array<double, 3> size = voxelSize(run.functional);
    std::array<double, 3> smoothness = estimateSmoothness(series, threads);
    for (std::size_t axis = 0; axis < 3; ++axis) smoothness[axis] *= size[axis];
    run.preparation.smoothnessMm = smoothness;
    const double target = automaticWidth(run.functional);
    return geometricMean(smoothness, run.functional.size) < target ? target : 0.0;
}

void smooth(Run& run, const MaskedSeries& series, WorkerThreads& threads) {
    const PreparationOptions& options = run.options.preparation;
    const double width = options.smoothIfNeeded ? chooseWidth(run, series, threads) : options.smoothMm;
    run.preparation.smoothedMm = width;
    if (options.smoothIfNeeded) {
        run.notes.say("Preparation: the data are smooth by " +
                      millimetres(geometricMean(*run.preparation.smoothnessMm, run.functional.size)) +
                      (width > 0.0 ? "." : "; they are not smoothed further."));
    }
    if (width <= 0.0) return;
    run.notes.say("Preparation: smoothed by " + millimetres(width) + " (FWHM) within the mask.");
    smoothSeries(series, sigmaInVoxels(width, run.functional), threads);
}

void filter(Run& run, const MaskedSeries& series, WorkerThreads& threads) {
    if (run.options.preparation.highPassSeconds <= 0.0) return;
    run.notes.say("Preparation: high-pass filter at " + secondsText(run.options.preparation.highPassSeconds) + ", " +
                  std::to_string(run.cosines) + " cosines removed.");
    removeCosines(series, run.cosines, threads);
}

void scale(Run& run, const MaskedSeries& series, WorkerThreads& threads) {
    switch (run.options.preparation.scaling) {
    case Scaling::kNone:
        return;
    case Scaling::kPercent:
        run.notes.say("Preparation: scaled to per cent of every voxel's mean.");
        return scaleToPercent(series, threads);
    case Scaling::kUnitVariance:
        run.notes.say("Preparation: the mean of every voxel removed, scaled to unit variance.");
        return scaleToUnitVariance(series, threads);
    }
}

void excludeUnusable(Run& run, WorkerThreads& threads) {
    RunMask& mask = run.mask;
    mask.excludedWhenPrepared = removeUnusable(summariseVoxels(run.session.series, threads, mask.voxels), mask.voxels);
    mask.count -= mask.excludedWhenPrepared.all();
    if (mask.count > 0) return;
    throw Failure(ExitStatus::kInput,
                  "no voxel of " + run.options.functional.string() +
                      " still changes after the preparation; check --smooth, --high-pass and --scale "
                      "(--scale percent needs images whose mean is positive).");
}

} // namespace

void prepareSeries(Run& run) {
    if (!run.options.preparation.any()) return;
    run.progress.stage("preparing");
    WorkerThreads threads(MatrixProducts::threadsFor(run.options.control.threads));
    const MaskedSeries series{run.session.series.floats.get(), run.volumes, run.functional.size, run.mask.voxels};
    smooth(run, series, threads);
    filter(run, series, threads);
    scale(run, series, threads);
    excludeUnusable(run, threads);
    run.progress.clear();
}

} // namespace zn::headless
