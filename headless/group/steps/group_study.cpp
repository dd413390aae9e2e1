#include "headless/group/steps/group_study.h"

#include "headless/compression/checksum.h"
#include "headless/failure/failure.h"
#include "headless/group/group_rows.h"
#include "headless/nifti/read_volumes.h"
#include "headless/text/input_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr const char* kScalings[] = {"none", "percent", "sd"}; // as --scale has them

Scaling scalingOf(const std::string& name) {
    return name == "percent" ? Scaling::kPercent : name == "sd" ? Scaling::kUnitVariance : Scaling::kNone;
}

std::vector<GroupRun> runsIn(const Json& json) {
    std::vector<GroupRun> runs;
    for (const Json& run : json.at("Runs")) {
        runs.push_back({run.at("Name"), run.at("Image").get<std::string>(), run.at("Volumes"), run.at("Checksum"),
                        run.value("Results", kDualRegression)});
    }
    return runs;
}

void fill(GroupStudy& study, const Json& json) {
    study.secondsPerVolume = json.at("RepetitionTime");
    study.dummyScans = json.at("DummyScans");
    const Json& preparation = json.at("Preparation");
    study.preparation.smoothMm = preparation.at("SmoothingFWHM");
    study.preparation.highPassSeconds = preparation.at("HighPassCutOff");
    study.preparation.scaling = scalingOf(preparation.at("Scaling").get<std::string>());
    study.runs = runsIn(json);
}

} // namespace

int GroupStudy::rows() const {
    std::vector<int> volumes;
    for (const GroupRun& run : runs) volumes.push_back(run.volumes);
    return rowsToKeep(volumes);
}

fs::path studyFile(const fs::path& folder) {
    return folder / "study.json";
}

fs::path studyMask(const fs::path& folder) {
    return folder / "desc-brain_mask.nii.gz";
}

std::string studyText(const GroupStudy& study, const std::string& basis) {
    Json runs = Json::array();
    for (const GroupRun& run : study.runs) {
        runs.push_back(
            {{"Name", run.name}, {"Image", run.image.string()}, {"Volumes", run.volumes}, {"Checksum", run.checksum}});
        if (run.results != kDualRegression) runs.back()["Results"] = run.results.string();
    }
    const PreparationOptions& preparation = study.preparation;
    const Json json = {{"GeneratedBy", {{"Name", "znica"}, {"Version", ZNICA_VERSION}}},
                       {"Basis", basis},
                       {"RepetitionTime", study.secondsPerVolume},
                       {"DummyScans", study.dummyScans},
                       {"Preparation",
                        {{"SmoothingFWHM", preparation.smoothMm},
                         {"HighPassCutOff", preparation.highPassSeconds},
                         {"Scaling", kScalings[static_cast<int>(preparation.scaling)]}}},
                       {"Voxels", study.voxels()},
                       {"RowsKept", study.rows()},
                       {"Runs", runs}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::vector<GroupRun> plannedRuns(const fs::path& folder) {
    if (!fs::is_regular_file(studyFile(folder))) return {};
    try {
        return runsIn(Json::parse(readWholeFile(studyFile(folder))));
    } catch (const Json::exception&) {
        return {};
    }
}

GroupStudy readStudy(const fs::path& folder) {
    if (!fs::exists(studyFile(folder))) {
        throw Failure(ExitStatus::kInput, folder.string() + " holds no planned study (study.json); plan one with "
                                                            "znica group plan.");
    }
    const std::string text = readWholeFile(studyFile(folder));
    GroupStudy study;
    try {
        fill(study, Json::parse(text));
    } catch (const Json::exception&) {
        refuseFile(studyFile(folder), "is damaged; plan the study again with znica group plan --force.");
    }
    study.folder = folder;
    study.grid = readImageHeader(studyMask(folder));
    study.mask = readMask(study.grid);
    for (std::size_t v = 0; v < study.mask.size(); ++v) {
        if (study.mask[v] != 0) study.inside.push_back(static_cast<std::int64_t>(v));
    }
    study.id = checksumOf(text);
    return study;
}

} // namespace zn::headless
