#include "headless/compression/checksum.h"
#include "headless/failure/failure.h"
#include "headless/group/steps/batch_files.h"
#include "headless/group/steps/component_count.h"
#include "headless/group/steps/earlier_files.h"
#include "headless/group/steps/group_maps.h"
#include "headless/group/steps/rows_file.h"
#include "headless/group/steps/spatial_metrics.h"
#include "headless/group/steps/step_files.h"
#include "headless/group/steps/steps.h"
#include "headless/run/run_driver.h"
#include "headless/run/stopwatch.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr char kLeadingRows[] = "group.nii"; // the plug-in's result is named after it

// The record of the merged rows of the study as it is planned now.
Json mergedRecord(const GroupStudy& study) {
    const auto record = anyRecord(reductionFolder(study.folder) / "group.json");
    if (!record) refuseInput(study.folder.string() + " holds no merged rows yet; run znica group merge first.");
    if (record->value("Study", "") != study.id) {
        refuseInput("the merged rows in " + study.folder.string() +
                    " belong to another plan of this study; repeat znica group reduce and znica group merge.");
    }
    return *record;
}

void requireRows(const GroupOptions& options, int rows) {
    if (!options.components || *options.components <= rows) return;
    refuseInput(std::to_string(*options.components) + " components are more than the " + std::to_string(rows) +
                " rows to which the group is reduced; request fewer with " + options.componentsOption +
                ", or list more runs.");
}

// The number of components: as requested, or the median of the runs' estimates.
int componentsFor(const GroupOptions& options, const Json& merged) {
    if (options.components) {
        requireRows(options, merged.at("Rows"));
        return *options.components;
    }
    const auto estimates = merged.at("ComponentsOfRuns").get<std::vector<int>>();
    const int components = componentsOfGroup(estimates, merged.at("Rows"));
    const auto [least, most] = std::minmax_element(estimates.begin(), estimates.end());
    if (!options.quiet) {
        std::printf("Components: %d, the median of the runs' estimates (%d to %d).\n", components, *least, *most);
    }
    return components;
}

// The leading rows as an image, which the host takes for volumes.
void writeLeadingRows(const GroupStudy& study, int components, const Json& merged, UnfinishedWork& unfinished) {
    const fs::path folder = reductionFolder(study.folder);
    const GroupRows rows = readRows(folder / "group.rows", merged, components);
    StepFiles files(unfinished, folder, "leading.json");
    writeMaps(files[kLeadingRows], study, rows.values, "leading rows of the group");
    files.commit({{"Basis", merged.at("Checksum")}, {"Rows", components}});
}

RunOptions pluginOptions(const GroupStudy& study, const GroupOptions& options, int components) {
    RunOptions run;
    run.functional = reductionFolder(study.folder) / kLeadingRows;
    run.out = study.folder / "ica";
    run.maskSource = MaskSource::kFile;
    run.mask = studyMask(study.folder);
    run.plugin = options.plugin;
    run.preparation = {};
    run.eigenvalues = {1, components};
    run.starts = options.starts;
    run.maxIterations = options.maxIterations;
    run.secondsPerVolume = 1.0; // rows have no time; what depends on it is dropped
    run.force = true;
    run.control.seed = options.seed;
    run.control.threads = options.threads;
    run.control.repeats = options.repeats;
    run.control.quiet = true;
    run.control.report = false;
    return run;
}

void writeGroupFiles(const GroupStudy& study, const GroupOptions& options, Json record, UnfinishedWork& unfinished) {
    const fs::path result = study.folder / "ica";
    const GroupMaps maps = readMaps(result / "group_desc-ICA_components.nii.gz", study);
    StepFiles files(unfinished, study.folder, groupRecordFile("").string());
    const fs::path written = files[groupMapsFile("").string()]; // rounded, and thus what later steps read
    writeMaps(written, study, maps.values, "group components, z");
    copySpatialMetrics(result, files["desc-groupICA_metrics.tsv"], files["desc-groupICA_metrics.json"]);
    for (fs::path& earlier : filesOfOtherMaps(study, readMaps(written, study))) files.supersede(std::move(earlier));
    record["ComponentsFound"] = maps.count;
    files.commit(record);
    if (options.quiet) return;
    std::printf("%d of %d group components found.\n", maps.count, record["ComponentsRequested"].get<int>());
}

ExitStatus statusOf(const Json& record) {
    return record.at("ComponentsFound") < record.at("ComponentsRequested") ? ExitStatus::kGaveUp : ExitStatus::kDone;
}

} // namespace

void requirePossibleComponents(const GroupOptions& options) {
    requireRows(options, readStudy(options.folder).rows());
}

ExitStatus separateGroup(const GroupOptions& options, UnfinishedWork& unfinished) {
    const Stopwatch total;
    const GroupStudy study = readStudy(options.folder);
    const Json merged = mergedRecord(study);
    const int components = componentsFor(options, merged);
    Json record = {{"Basis", ""},
                   {"Study", study.id},
                   {"Reduction", merged.at("Checksum")},
                   {"ComponentsRequested", components},
                   {"Repeats", options.repeats},
                   {"Starts", options.starts},
                   {"MaxIterations", options.maxIterations},
                   {"Seed", options.seed},
                   {"PlugIn", options.plugin.string()}};
    if (!options.components) record["ComponentsOfRuns"] = merged.at("ComponentsOfRuns");
    record["Basis"] = checksumOf(record.dump());
    if (const auto done = recordOf(groupRecordFile(study.folder), record["Basis"]); done && !options.force) {
        if (!options.quiet) std::printf("The group components are estimated already.\n");
        return statusOf(*done);
    }
    if (options.plugin.empty()) record.erase("PlugIn"); // the one that belongs to this version
    writeLeadingRows(study, components, merged, unfinished);
    const ExitStatus status = runAnalysis(pluginOptions(study, options, components), unfinished);
    record["Seconds"] = total.seconds();
    writeGroupFiles(study, options, record, unfinished);
    return status;
}

} // namespace zn::headless
