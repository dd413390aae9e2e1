#include "headless/group/steps/earlier_files.h"

#include "headless/group/steps/dual_regression_files.h"
#include "headless/group/steps/group_page.h"
#include "headless/group/steps/group_tables.h"
#include "headless/group/steps/step_files.h"
#include "headless/result/earlier_result.h"

#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

void addDualRegression(const GroupStudy& study, const GroupRun& run, std::vector<fs::path>& files) {
    const DualRegressionFiles names(run.name);
    for (const std::string& name :
         {names.record, names.courses, names.metrics, names.metricsDescription, names.effect, names.z}) {
        files.push_back(dualRegressionFolder(study, run) / name);
    }
}

void addTables(const fs::path& folder, std::vector<fs::path>& files) {
    for (const char* name : {kCorrelationsRecord, "desc-groupICA_netmats.tsv", "desc-groupICA_amplitudes.json",
                             "desc-groupICA_amplitudes.tsv", kGroupPage}) {
        files.push_back(folder / name);
    }
}

void keepExisting(std::vector<fs::path>& files) {
    std::error_code error;
    std::erase_if(files, [&](const fs::path& file) { return !fs::exists(fs::symlink_status(file, error)); });
}

} // namespace

std::vector<fs::path> filesOfEarlierPlan(const fs::path& folder) {
    GroupStudy study;
    study.folder = folder;
    study.runs = plannedRuns(folder);
    std::vector<fs::path> files = {groupRecordFile(folder)};
    addTables(folder, files);
    for (const GroupRun& run : study.runs) addDualRegression(study, run, files);
    for (const char* name : {"desc-groupICA_metrics.json", "desc-groupICA_metrics.tsv"}) files.push_back(folder / name);
    files.push_back(groupMapsFile(folder));
    std::error_code error;
    const fs::path result = folder / "ica";
    if (fs::is_directory(result, error) && whyNotAResult(result, ResultKind::kRun).empty()) files.push_back(result);
    keepExisting(files);
    return files;
}

std::vector<fs::path> filesOfOtherMaps(const GroupStudy& study, const GroupMaps& maps) {
    std::vector<fs::path> files;
    if (!recordOf(study.folder / kCorrelationsRecord, groupTablesBasis(study, maps))) addTables(study.folder, files);
    for (const GroupRun& run : study.runs) {
        const fs::path record = dualRegressionFolder(study, run) / DualRegressionFiles(run.name).record;
        if (!recordOf(record, dualRegressionBasis(study, maps, run))) addDualRegression(study, run, files);
    }
    keepExisting(files);
    return files;
}

} // namespace zn::headless
