#include "headless/denoise/denoise_stages.h"

#include "headless/prepare/cut_off.h"
#include "headless/prepare/high_pass.h"
#include "headless/text/input_file.h"
#include "headless/text/short_texts.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

constexpr char kFd[] = "framewise_displacement"; // the column's name in fMRIPrep's tables
constexpr char kNoColumns[] = "none";

void requirePresent(const Confounds& confounds, const std::filesystem::path& file) {
    for (std::size_t i = 0; i < confounds.names.size(); ++i) {
        const auto& values = confounds.values[i];
        const auto missing = std::ranges::find_if(values, [](float value) { return std::isnan(value); });
        if (missing == values.end()) continue;
        refuseFile(file, "has n/a in the column \"" + confounds.names[i] + "\" (analysed volume " +
                             std::to_string(missing - values.begin() + 1) +
                             "), which cannot be regressed out; choose other columns with --columns.");
    }
}

} // namespace

void readNuisance(Denoising& run) {
    const DenoiseOptions& options = run.options;
    if (options.highPassSeconds > 0.0) {
        requireCutOff(options.highPassSeconds, run.secondsPerVolume);
        run.cosines = cosinesBelow(options.highPassSeconds, run.volumes(), run.secondsPerVolume);
        run.say("High-pass filter: " + counted(static_cast<std::size_t>(run.cosines), "cosine") + " slower than " +
                shortNumber(options.highPassSeconds) + " s.");
    }
    if (options.confounds.empty()) return;
    const AnalysedVolumes volumes{run.functional.volumes, run.dummyScans, run.secondsPerVolume};
    run.fd = readConfoundIfAny(options.confounds, kFd, volumes);
    if (options.confoundColumns == std::vector<std::string>{kNoColumns}) return;
    run.confounds = readConfounds(options.confounds, options.confoundColumns, volumes);
    requirePresent(*run.confounds, options.confounds);
    const std::size_t ignored = run.confounds->ignored.size();
    run.say("Confounds: " + counted(run.confounds->names.size(), "column") + " of " + options.confounds.string() +
            (ignored == 0 ? "." : "; " + counted(ignored, "other") + " constant or without values."));
}

} // namespace zn::headless
