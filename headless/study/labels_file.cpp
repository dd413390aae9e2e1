#include "headless/study/labels_file.h"

#include "headless/bids/read_folder.h"
#include "headless/failure/failure.h"

namespace zn::headless {

namespace fs = std::filesystem;

fs::path labelsOf(const PlannedRun& run, const fs::path& folder) {
    std::vector<fs::path> places = {folder};
    for (const fs::path& part : run.folder) places.push_back(places.back() / part);
    fs::path found;
    for (const fs::path& place : places) {
        for (const std::string& name : namesIn(place)) {
            if (!name.starts_with(run.name + "_desc-ICA_labels") || !name.ends_with(".tsv")) continue;
            if (!found.empty()) {
                throw Failure(ExitStatus::kInput, run.name + " has two tables of labels, " + found.string() + " and " +
                                                      (place / name).string() + "; keep the one that is valid.");
            }
            found = place / name;
        }
    }
    return found;
}

} // namespace zn::headless
