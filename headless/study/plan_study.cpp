#include "headless/study/plan_study.h"

#include "headless/bids/word_list.h"
#include "headless/failure/failure.h"
#include "headless/study/belongings.h"
#include "headless/study/candidates.h"

#include <algorithm>
#include <map>
#include <set>
#include <system_error>

namespace zn::headless {

namespace {

void requireLabelsFolder(const StudyOptions& options) {
    std::error_code error;
    if (!options.denoise || std::filesystem::is_directory(options.labelsFolder, error)) return;
    refuseInput(options.labelsFolder.string() + " is not a folder; name the one that holds the tables of labels.");
}

void requireDifferentNames(const std::vector<PlannedRun>& runs) {
    std::map<std::string, const PlannedRun*> byName;
    for (const PlannedRun& run : runs) {
        const auto [other, isNew] = byName.emplace(run.name, &run);
        if (isNew) continue;
        refuseInput(other->second->image.string() + " and " + run.image.string() + " would have the same result, " +
                    run.name + "; leave one of them out.");
    }
}

void keepOnly(std::vector<PlannedRun>& runs, const std::string& name) {
    if (name.empty()) return;
    std::erase_if(runs, [&](const PlannedRun& run) { return run.name != name; });
    if (runs.empty()) refuseInput("there is no run named " + name + "; --list prints the names.");
}

// "2 images were passed over, being single echoes: a_bold.nii.gz, b_bold.nii.gz."
void notePassedOver(const PassedOver& passedOver, std::vector<std::string>& notes) {
    for (const auto& [why, names] : passedOver) {
        notes.push_back("Passed over (" + why + "): " + wordList(names) + ".");
    }
}

} // namespace

StudyPlan planStudy(const StudyOptions& options) {
    requireLabelsFolder(options);
    StudyPlan plan;
    PassedOver passedOver;
    std::vector<Candidate> candidates = findCandidates(options, passedOver);
    chooseCandidates(options.selection, candidates);
    SidecarFolders sidecars;
    for (const Candidate& candidate : candidates) plan.runs.push_back(withBelongings(candidate, options, sidecars));
    keepOnly(plan.runs, options.selection.only);
    requireDifferentNames(plan.runs);
    notePassedOver(passedOver, plan.notes);
    noteMissing(plan.runs, options, plan.notes);
    return plan;
}

} // namespace zn::headless
