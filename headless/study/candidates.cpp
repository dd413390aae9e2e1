#include "headless/study/candidates.h"

#include "headless/bids/entity_filter.h"
#include "headless/bids/functional_folders.h"
#include "headless/bids/shallow_json.h"
#include "headless/bids/space.h"
#include "headless/bids/word_list.h"
#include "headless/failure/failure.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <system_error>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

bool isDerivative(const fs::path& dataset) {
    std::ifstream file(dataset / "dataset_description.json");
    const auto description = parseShallow<nlohmann::json>(file);
    return description.is_object() && description.value("DatasetType", nlohmann::json()) == "derivative";
}

void requireFolder(const fs::path& folder) {
    std::error_code error;
    if (!fs::exists(folder, error))
        refuseInput(folder.string() + " does not exist; name the folder of a BIDS dataset.");
    if (!fs::is_directory(folder, error))
        refuseInput(folder.string() + " is not a folder; name that of a BIDS dataset.");
}

// The subject and session of --only narrow the walk.
Selection narrowed(Selection selection) {
    const auto name = parseBidsName(selection.only + "_bold");
    if (selection.only.empty() || !name) return selection;
    if (const auto subject = name->label("sub")) selection.participants = {*subject};
    if (const auto session = name->label("ses")) selection.sessions = {*session};
    return selection;
}

void addFrom(const Derivatives& from, bool preprocessed, const StudyOptions& options,
             std::vector<Candidate>& candidates, PassedOver& passedOver) {
    const fs::path& root = from.folder;
    const Selection selection = narrowed(options.selection);
    for (const fs::path& folder : functionalFolders(root, selection.participants, selection.sessions)) {
        const auto files = std::make_shared<const BidsFolder>(root / folder);
        const bool same = root == options.dataset;
        const auto events = same ? files : std::make_shared<const BidsFolder>(options.dataset / folder);
        for (NamedFile& image : functionalImages(*files, preprocessed, passedOver)) {
            candidates.push_back({std::move(image), from.name, folder, files, events, preprocessed});
        }
    }
}

std::vector<std::string> labelsOf(const std::vector<Candidate>& candidates, const char* entity) {
    std::set<std::string> labels;
    for (const Candidate& candidate : candidates) {
        if (const auto label = candidate.image.name.label(entity)) labels.insert(*label);
    }
    return {labels.begin(), labels.end()};
}

std::vector<std::string> withoutPrefix(std::vector<std::string> labels, const std::string& prefix) {
    for (std::string& label : labels) {
        if (label.starts_with(prefix)) label.erase(0, prefix.size());
    }
    return labels;
}

void filterBy(const char* entity, const std::vector<std::string>& given, std::vector<Candidate>& candidates,
              EntityFilter& filter) {
    if (given.empty()) return;
    const std::vector<std::string> wanted = withoutPrefix(given, std::string(entity) + "-");
    const std::vector<std::string> present = labelsOf(candidates, entity);
    for (const std::string& label : wanted) {
        const auto same = [&](const std::string& other) { return sameLabel(entity, label, other); };
        if (std::any_of(present.begin(), present.end(), same)) continue;
        refuseInput("no image has the label " + std::string(entity) + "-" + label +
                    (present.empty() ? "; none has such a label." : "; the labels are " + wordList(present) + "."));
    }
    filter.allow(entity, wanted);
}

void keepSpace(const std::string& wanted, std::vector<Candidate>& candidates) {
    if (!candidates.front().preprocessed && wanted.empty()) return;
    if (!candidates.front().preprocessed) {
        refuseInput("--space chooses among preprocessed images; say with --derivatives where they are.");
    }
    std::set<std::string> spaces;
    for (const Candidate& candidate : candidates) spaces.insert(spaceOf(candidate.image.name));
    const std::string chosen = chooseSpace({spaces.begin(), spaces.end()}, wanted);
    std::erase_if(candidates, [&](const Candidate& candidate) { return spaceOf(candidate.image.name) != chosen; });
}

} // namespace

std::vector<Candidate> findCandidates(const StudyOptions& options, PassedOver& passedOver) {
    std::vector<Candidate> candidates;
    requireFolder(options.dataset);
    for (const Derivatives& derivatives : options.derivatives) {
        requireFolder(derivatives.folder);
        addFrom(derivatives, true, options, candidates, passedOver);
    }
    if (options.derivatives.empty()) {
        addFrom({"raw", options.dataset}, isDerivative(options.dataset), options, candidates, passedOver);
    }
    if (!candidates.empty()) return candidates;
    const fs::path& where = options.derivatives.empty() ? options.dataset : options.derivatives.front().folder;
    const bool preprocessed = !options.derivatives.empty() || isDerivative(options.dataset);
    refuseInput("the chosen subjects of " + where.string() + " have no *" + (preprocessed ? "_desc-preproc" : "") +
                "_bold.nii.gz in sub-*/[ses-*/]func; check the folder and the labels.");
}

void chooseCandidates(const Selection& selection, std::vector<Candidate>& candidates) {
    EntityFilter filter;
    filterBy("task", selection.tasks, candidates, filter);
    filterBy("run", selection.runs, candidates, filter);
    if (!selection.filterFile.empty()) filter.addFile(selection.filterFile);
    const std::size_t all = candidates.size();
    std::erase_if(candidates, [&](const Candidate& candidate) { return !filter.passes(candidate.image.name); });
    if (candidates.empty()) {
        refuseInput("none of the " + std::to_string(all) +
                    " images passes all filters (--task, --run, --bids-filter-file); leave one of them out.");
    }
    // The name of a single run says its space.
    if (!selection.only.empty()) {
        std::erase_if(candidates, [&](const Candidate& c) { return runName(c.image.name) != selection.only; });
    } else {
        keepSpace(selection.space, candidates);
    }
}

} // namespace zn::headless
