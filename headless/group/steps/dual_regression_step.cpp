#include "headless/blas/matrix_products.h"
#include "headless/failure/failure.h"
#include "headless/group/dual_regression.h"
#include "headless/group/steps/dual_regression_files.h"
#include "headless/group/steps/memory_need.h"
#include "headless/group/steps/prepared_run.h"
#include "headless/group/steps/run_metrics.h"
#include "headless/group/steps/step_files.h"
#include "headless/group/steps/steps.h"
#include "headless/memory/available_memory.h"
#include "headless/result/result_names.h"
#include "headless/run/stopwatch.h"
#include "headless/text/text_file.h"

#include <algorithm>
#include <cstdio>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

void requireKnown(const GroupStudy& study, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (std::ranges::any_of(study.runs, [&](const GroupRun& run) { return run.name == name; })) continue;
        throw Failure(ExitStatus::kInput, name + " is not a run of the study; " + studyFile(study.folder).string() +
                                              " lists them. A run that was added needs a new plan.");
    }
}

DualRegression regress(const PreparedRun& prepared, const GroupStudy& study, const GroupMaps& maps,
                       const std::string& name, WorkerThreads& threads) {
    auto result = regressDually(
        {prepared.series.data(), prepared.volumes, maps.values.data(), maps.count, study.voxels(), prepared.lost},
        threads);
    if (result) return std::move(*result);
    throw Failure(ExitStatus::kInput, name + " cannot be regressed on " + std::to_string(maps.count) +
                                          " components: its " + std::to_string(prepared.volumes) + " volumes, less " +
                                          std::to_string(prepared.lost + 1) +
                                          " for the filter and the mean, are too few; request fewer components, or "
                                          "leave the run out.");
}

std::string courseTable(const DualRegression& result, int volumes) {
    const std::size_t components = result.amplitudes.size();
    std::string text;
    for (std::size_t c = 0; c < components; ++c) text += (c > 0 ? "\t" : "") + componentName(static_cast<int>(c));
    text += '\n';
    for (int t = 0; t < volumes; ++t) {
        for (std::size_t c = 0; c < components; ++c) {
            const std::size_t at = c * static_cast<std::size_t>(volumes) + static_cast<std::size_t>(t);
            text += (c > 0 ? "\t" : "") + cellText(static_cast<float>(result.courses[at]));
        }
        text += '\n';
    }
    return text;
}

void regressRun(const GroupOptions& options, const GroupStudy& study, const GroupMaps& maps, const GroupRun& run,
                WorkerThreads& threads, UnfinishedWork& unfinished) {
    const Stopwatch total;
    const DualRegressionFiles names(run.name);
    const auto folder = dualRegressionFolder(study, run);
    const std::string basis = dualRegressionBasis(study, maps, run);
    if (!options.force && recordOf(folder / names.record, basis)) return;
    StepFiles files(unfinished, folder, names.record);
    const PreparedRun prepared = prepareRun(study, run, threads);
    const double read = total.seconds();
    const DualRegression result = regress(prepared, study, maps, run.name, threads);
    writeTextFile(files[names.courses], courseTable(result, prepared.volumes));
    writeRunMetrics(files[names.metrics], files[names.metricsDescription], result, maps, prepared.volumes);
    writeMaps(files[names.effect], study, result.effect, "dual regression, effect");
    writeMaps(files[names.z], study, result.z, "dual regression, z");
    files.commit(Json{{"Description", "Courses of the group's components in this run: first regression, scaled to mean "
                                      "0 and variance 1."},
                      {"SamplingFrequency", 1.0 / study.secondsPerVolume},
                      {"Basis", basis},
                      {"Amplitudes", result.amplitudes},
                      {"DegreesOfFreedom", result.freedom},
                      {"ExplainedPercent", result.explainedPercent},
                      {"Seconds", total.seconds()},
                      {"PeakMemoryBytes", peakMemoryBytes()}});
    if (options.quiet) return;
    std::printf("%s: read in %.1f s, regressed and written in %.1f s; %.1f %% explained\n", run.name.c_str(), read,
                total.seconds() - read, result.explainedPercent);
    std::fflush(stdout);
}

} // namespace

void regressRuns(const GroupOptions& options, UnfinishedWork& unfinished) {
    const GroupStudy study = readStudy(options.folder);
    requireKnown(study, options.only);
    const GroupMaps maps = readGroupMaps(study);
    requireFreeMemory("the dual regression", preparationBytes(study) + dualRegressionBytes(study, maps.count));
    WorkerThreads threads(MatrixProducts::threadsFor(options.threads));
    for (const GroupRun& run : study.runs) {
        const bool wanted = options.only.empty() || std::ranges::find(options.only, run.name) != options.only.end();
        if (wanted) regressRun(options, study, maps, run, threads, unfinished);
    }
}

} // namespace zn::headless
