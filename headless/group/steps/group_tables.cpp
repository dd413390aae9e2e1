#include "headless/group/steps/group_tables.h"

#include "headless/compression/checksum.h"
#include "headless/failure/failure.h"
#include "headless/group/steps/course_correlations.h"
#include "headless/group/steps/dual_regression_files.h"
#include "headless/group/steps/group_page.h"
#include "headless/group/steps/odd_runs.h"
#include "headless/group/steps/outlying_values.h"
#include "headless/group/steps/step_files.h"
#include "headless/group/steps/steps.h"
#include "headless/result/result_names.h"
#include "headless/text/text_file.h"

#include <cstdio>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// [run]: the amplitudes of its components. Throws Failure when runs have not been regressed on these maps.
std::vector<std::vector<double>> amplitudesOf(const GroupStudy& study, const GroupMaps& maps) {
    std::vector<std::vector<double>> amplitudes;
    std::vector<std::string> missing;
    for (const GroupRun& run : study.runs) {
        const auto record = recordOf(dualRegressionFolder(study, run) / DualRegressionFiles(run.name).record,
                                     dualRegressionBasis(study, maps, run));
        if (record) {
            amplitudes.push_back(record->at("Amplitudes").get<std::vector<double>>());
        } else {
            missing.push_back(run.name);
        }
    }
    if (missing.empty()) return amplitudes;
    throw Failure(ExitStatus::kInput,
                  listOfNames(missing) + (missing.size() == 1 ? " has" : " have") +
                      " not been regressed on the group's components yet; run znica group back first.");
}

// [component][run]
std::vector<std::vector<bool>> outlyingRuns(const std::vector<std::vector<double>>& amplitudes) {
    std::vector<std::vector<bool>> outlying;
    for (std::size_t c = 0; c < amplitudes.front().size(); ++c) {
        std::vector<double> values;
        values.reserve(amplitudes.size());
        for (const auto& run : amplitudes) values.push_back(run[c]);
        outlying.push_back(outlyingValues(values));
    }
    return outlying;
}

// [run]: in some component.
std::vector<bool> outlyingInAny(const std::vector<std::vector<bool>>& outlying) {
    std::vector<bool> any(outlying.front().size());
    for (const auto& component : outlying) {
        for (std::size_t run = 0; run < any.size(); ++run) any[run] = any[run] || component[run];
    }
    return any;
}

std::string amplitudeTable(const GroupStudy& study, const std::vector<std::vector<double>>& amplitudes,
                           const std::vector<std::vector<bool>>& outlying) {
    const std::size_t components = outlying.size();
    std::string text = "run";
    for (std::size_t c = 0; c < components; ++c) text += '\t' + componentName(static_cast<int>(c));
    text += "\toutliers\n";
    for (std::size_t run = 0; run < amplitudes.size(); ++run) {
        text += study.runs[run].name;
        std::string outliers;
        for (std::size_t c = 0; c < components; ++c) {
            text += '\t' + cellText(static_cast<float>(amplitudes[run][c]));
            if (outlying[c][run]) outliers += (outliers.empty() ? "" : ",") + componentName(static_cast<int>(c));
        }
        text += '\t' + (outliers.empty() ? "n/a" : outliers) + '\n';
    }
    return text;
}

std::string correlationTable(const GroupStudy& study) {
    std::vector<fs::path> files;
    for (const GroupRun& run : study.runs) {
        files.push_back(dualRegressionFolder(study, run) / DualRegressionFiles(run.name).courses);
    }
    std::string text = "a\tb\tmean_r\tsd_z\n";
    for (const CoursePair& pair : courseCorrelations(files)) {
        text += componentName(pair.a) + '\t' + componentName(pair.b) + '\t' + cellText(static_cast<float>(pair.meanR)) +
                '\t' + cellText(static_cast<float>(pair.sdOfZ)) + '\n';
    }
    return text;
}

constexpr char kAmplitudes[] = "Standard deviation of every component's course in the run (first regression of the "
                               "dual regression, on group maps of unit variance), in units of the prepared data.";
constexpr char kOutliers[] =
    "Components whose amplitude in this run lies more than 3.5 robust standard deviations "
    "(1.4826 times the median absolute deviation) from the median of all runs; n/a: none. With fewer than "
    "six runs, none is marked.";

void sayPage(const GroupStudy& study) {
    std::printf("page: %s\n", (study.folder / kGroupPage).c_str());
}

} // namespace

std::string groupTablesBasis(const GroupStudy& study, const GroupMaps& maps) {
    return checksumOf(study.id + maps.checksum);
}

void writeGroupTables(const GroupOptions& options, UnfinishedWork& unfinished) {
    const GroupStudy study = readStudy(options.folder);
    const GroupMaps maps = readGroupMaps(study);
    const auto amplitudes = amplitudesOf(study, maps);
    const std::string basis = groupTablesBasis(study, maps);
    const fs::path page = findReportTemplate(kGroupTemplate);
    const bool hasPage = page.empty() || fs::exists(study.folder / kGroupPage);
    if (!options.force && hasPage && recordOf(study.folder / kCorrelationsRecord, basis)) {
        if (!options.quiet) std::printf("The tables are written already.\n");
        if (!options.quiet && !page.empty()) sayPage(study);
        return;
    }
    const auto outlying = outlyingRuns(amplitudes);
    const GroupTables tables{amplitudeTable(study, amplitudes, outlying), correlationTable(study),
                             outlyingInAny(outlying)};
    StepFiles files(unfinished, study.folder, kCorrelationsRecord);
    writeTextFile(files["desc-groupICA_amplitudes.tsv"], tables.amplitudes);
    writeTextFile(files["desc-groupICA_amplitudes.json"],
                  Json{{"Description", kAmplitudes}, {"outliers", {{"Description", kOutliers}}}}.dump(2) + "\n");
    writeTextFile(files["desc-groupICA_netmats.tsv"], tables.correlations);
    if (page.empty()) {
        std::fprintf(stderr, "znica: no %s was written because its template is not installed.\n", kGroupPage);
    } else {
        makeGroupPage(page, study, maps, tables).write(files[kGroupPage]);
    }
    files.commit(Json{{"Basis", basis},
                      {"Description", "Correlations between the components' courses, over the runs."},
                      {"mean_r", {{"Description", "Mean over the runs of Fisher's z, as a correlation."}}},
                      {"sd_z", {{"Description", "Standard deviation of Fisher's z over the runs (divisor n - 1)."}}}});
    if (options.quiet) return;
    std::printf("tables of %zu runs: %s\n", amplitudes.size(), study.folder.c_str());
    if (!page.empty()) sayPage(study);
}

} // namespace zn::headless
