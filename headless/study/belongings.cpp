#include "headless/study/belongings.h"

#include "headless/bids/matching_files.h"
#include "headless/bids/non_steady_state.h"
#include "headless/bids/word_list.h"
#include "headless/failure/failure.h"
#include "headless/study/labels_file.h"

#include <algorithm>
#include <functional>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// As datasets from git-annex have where the content was not fetched.
void requireTarget(const fs::path& image) {
    std::error_code error;
    if (fs::exists(image, error) || !fs::is_symlink(image, error)) return;
    throw Failure(ExitStatus::kInput, image.string() + " is a link to " + fs::read_symlink(image, error).string() +
                                          ", which does not exist; fetch the file.");
}

void addMask(const Candidate& candidate, const StudyOptions& options, PlannedRun& run) {
    if (options.maskGiven || options.maskFrom == MaskFrom::kAutomatic || !candidate.preprocessed) return;
    run.mask = maskOf(candidate.image, *candidate.files);
    if (!run.mask.empty() || options.maskFrom == MaskFrom::kDerivativesIfAny) return;
    throw Failure(ExitStatus::kInput, run.image.string() + " has no mask with the same entities and desc-brain_mask; "
                                                           "use --mask-from auto.");
}

void addConfounds(const Candidate& candidate, const StudyOptions& options, PlannedRun& run) {
    if (!options.confoundsFromDerivatives && !options.dummyScansFromConfounds) return;
    const fs::path table = confoundsOf(candidate.image, *candidate.files);
    if (options.confoundsFromDerivatives) run.confounds = table;
    if (!options.dummyScansFromConfounds) return;
    if (table.empty()) {
        throw Failure(ExitStatus::kInput, run.image.string() + " has no table of confounds, which --dummy-scans "
                                                               "confounds needs; give a number.");
    }
    run.dummyScans = nonSteadyStateVolumes(table);
}

void addAll(const Candidate& candidate, const StudyOptions& options, PlannedRun& run) {
    requireTarget(run.image);
    addMask(candidate, options, run);
    addConfounds(candidate, options, run);
    if (options.run.designBesideImage) run.events = eventsOf(candidate.image, *candidate.events);
}

// Without usable labels a run can still be analysed.
void addLabels(const StudyOptions& options, PlannedRun& run) {
    if (!options.denoise) return;
    try {
        run.labels = labelsOf(run, options.labelsFolder);
    } catch (const Failure& failure) {
        run.labelsProblem = failure.what();
    }
}

void noteLack(const std::vector<PlannedRun>& runs, const std::string& what,
              const std::function<bool(const PlannedRun&)>& lacks, std::vector<std::string>& notes) {
    std::vector<std::string> names;
    for (const PlannedRun& run : runs) {
        if (lacks(run)) names.push_back(run.name);
    }
    if (!names.empty()) notes.push_back("Without " + what + ": " + wordList(names) + ".");
}

} // namespace

PlannedRun withBelongings(const Candidate& candidate, const StudyOptions& options, SidecarFolders& sidecars) {
    PlannedRun run;
    run.name = runName(candidate.image.name);
    run.image = candidate.image.file;
    run.dataset = candidate.dataset;
    run.folder = candidate.folder;
    run.entities = candidate.image.name;
    run.dummyScans = options.run.dummyScans;
    run.sidecars = sidecars.sidecarsOf(run.image);
    try {
        addAll(candidate, options, run);
    } catch (const Failure& failure) {
        run.problem = failure.what();
    }
    addLabels(options, run);
    return run;
}

void noteMissing(const std::vector<PlannedRun>& runs, const StudyOptions& options, std::vector<std::string>& notes) {
    const bool masks = !options.maskGiven && options.maskFrom == MaskFrom::kDerivativesIfAny;
    if (masks && std::any_of(runs.begin(), runs.end(), [](const auto& run) { return !run.mask.empty(); })) {
        noteLack(
            runs, "a mask of their own, so that one is computed", [](const auto& r) { return r.mask.empty(); }, notes);
    }
    if (options.run.designBesideImage) {
        noteLack(
            runs, "events", [](const auto& r) { return r.events.empty(); }, notes);
    }
    if (options.confoundsFromDerivatives) {
        noteLack(
            runs, "a table of confounds", [](const auto& r) { return r.confounds.empty(); }, notes);
    }
    if (options.denoise) {
        noteLack(
            runs, "labels, and therefore not denoised",
            [](const auto& r) { return r.labels.empty() && r.labelsProblem.empty(); }, notes);
    }
}

} // namespace zn::headless
