#include "headless/denoise/denoise_stages.h"

#include "headless/failure/failure.h"
#include "headless/prepare/high_pass.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace zn::headless {

namespace {

std::vector<UnitCourse> nuisanceOf(const Denoising& run) {
    std::vector<UnitCourse> columns;
    if (run.confounds) {
        columns.reserve(run.confounds->values.size());
        for (const auto& values : run.confounds->values) columns.push_back(unitCourse({values.begin(), values.end()}));
    }
    const auto volumes = static_cast<std::size_t>(run.volumes());
    const std::vector<double> rows = cosines(run.cosines, run.volumes());
    for (auto row = rows.begin(); row != rows.end(); row += static_cast<std::ptrdiff_t>(volumes)) {
        columns.emplace_back(row, row + static_cast<std::ptrdiff_t>(volumes));
    }
    return columns;
}

Regressors regressorsOf(const Denoising& run) {
    Regressors regressors;
    regressors.volumes = static_cast<std::size_t>(run.volumes());
    for (std::size_t i = 0; i < run.verdicts.size(); ++i) {
        auto& group = run.verdicts[i].rejected ? regressors.rejected : regressors.kept;
        group.push_back(unitCourse(run.courses.values[i]));
    }
    regressors.nuisance = nuisanceOf(run);
    return regressors;
}

void requireSomethingKept(const Denoising& run) {
    const std::size_t all = run.verdicts.size();
    if (run.options.method == DenoiseMethod::kAggressive) return;
    if (static_cast<std::size_t>(run.rejectedCount()) < all) return;
    throw Failure(ExitStatus::kInput,
                  "all " + std::to_string(all) + " components are rejected, so " + nameOf(run.options.method) +
                      " has none to protect; check the labels, or use --method aggr to keep only what no component "
                      "explains.");
}

// With nonaggr alone what kept courses share with the confounds stays, and the rest may have cancelled it before.
void noteSharedNuisance(Denoising& run, const Regressors& regressors) {
    constexpr double kNegligible = 0.05;
    if (run.options.method != DenoiseMethod::kNonAggressive || regressors.nuisance.empty()) return;
    const double share = largestNuisanceShare(regressors);
    if (share <= kNegligible) return;
    const std::string percent = std::to_string(std::lround(100.0 * share));
    run.say(
        "Regression: confounds and cosines explain up to " + percent +
        " % of a kept course, and nonaggr keeps that part in the image; use --method orthaggr or aggr to remove it" +
        (run.cosines > 0 ? ", or analyse with the same --high-pass." : "."));
}

} // namespace

void designRemoval(Denoising& run) {
    requireSomethingKept(run);
    const Regressors regressors = regressorsOf(run);
    run.removal = makeRemoval(regressors, run.options.method);
    noteSharedNuisance(run, regressors);
    if (run.removal.lostDegrees >= run.volumes() - 1) {
        throw Failure(ExitStatus::kInput, "the " + std::to_string(run.removal.count) +
                                              " columns to be removed leave "
                                              "nothing of " +
                                              std::to_string(run.volumes()) +
                                              " volumes; reject fewer components or choose fewer confounds.");
    }
    const int dependent = run.removal.designColumns - run.removal.designRank;
    if (dependent > 0) {
        run.say("Regression: " + std::to_string(dependent) + " of " + std::to_string(run.removal.designColumns) +
                (dependent == 1 ? " columns is a linear combination" : " columns are linear combinations") +
                " of the others; the fit is divided among them.");
    }
    if (run.removal.count == 0) run.say("Nothing is rejected and there are no confounds: the image stays as it is.");
}

} // namespace zn::headless
