#include "headless/blas/matrix_products.h"
#include "headless/failure/failure.h"
#include "headless/group/steps/batch_files.h"
#include "headless/group/steps/component_count.h"
#include "headless/group/steps/memory_need.h"
#include "headless/group/steps/prepared_run.h"
#include "headless/group/steps/rows_file.h"
#include "headless/group/steps/step_files.h"
#include "headless/group/steps/steps.h"
#include "headless/memory/available_memory.h"
#include "headless/run/stopwatch.h"

#include <cstdio>

namespace zn::headless {

namespace {

std::vector<GroupRun> runsOf(const GroupStudy& study, const Batch& batch) {
    const std::size_t runs = study.runs.size();
    const auto of = static_cast<std::size_t>(batch.of);
    if (of > runs) {
        throw Failure(ExitStatus::kInput, "--batch " + std::to_string(batch.number) + "/" + std::to_string(batch.of) +
                                              " asks for more batches than the " + std::to_string(runs) +
                                              " runs of the study; ask for fewer.");
    }
    const auto bound = [&](int number) {
        return study.runs.begin() + static_cast<std::ptrdiff_t>(runs * static_cast<std::size_t>(number) / of);
    };
    return {bound(batch.number - 1), bound(batch.number)};
}

} // namespace

void reduceBatch(const GroupOptions& options, UnfinishedWork& unfinished) {
    const GroupStudy study = readStudy(options.folder);
    const std::string name = batchName(options.batch);
    const std::string basis = batchBasis(study, options.batch);
    const std::vector<GroupRun> runs = runsOf(study, options.batch);
    const auto record = recordOf(reductionFolder(study.folder) / (name + ".json"), basis);
    if (record && !options.force) {
        if (!options.quiet) std::printf("%s is reduced already.\n", name.c_str());
        return;
    }
    const Stopwatch total;
    WorkerThreads threads(MatrixProducts::threadsFor(options.threads));
    requireFreeMemory("the reduction", preparationBytes(study) + reductionBytes(study, threads.threads()));
    StepFiles files(unfinished, reductionFolder(study.folder), name + ".json");
    GroupRows rows;
    rows.voxels = study.voxels();
    auto names = nlohmann::ordered_json::array();
    auto estimates = nlohmann::ordered_json::array();
    for (const GroupRun& run : runs) {
        const Stopwatch reading;
        const PreparedRun prepared = prepareRun(study, run, threads);
        const double read = reading.seconds();
        estimates.push_back(componentsOfRun(study, prepared, threads));
        absorbRun(rows, prepared.series.data(), prepared.volumes, study.rows(), threads);
        names.push_back(run.name);
        if (options.quiet) continue;
        std::printf("%s: read in %.1f s, reduced to %d rows in %.1f s\n", run.name.c_str(), read, rows.count(),
                    reading.seconds() - read);
        std::fflush(stdout);
    }
    nlohmann::ordered_json json = {
        {"Basis", basis}, {"Study", study.id}, {"Runs", names}, {"ComponentsOfRuns", estimates}};
    json.update(writeRows(files[name + ".rows"], rows));
    json["Seconds"] = total.seconds();
    json["PeakMemoryBytes"] = peakMemoryBytes();
    files.commit(json);
}

} // namespace zn::headless
