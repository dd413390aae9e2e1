#include "headless/blas/matrix_products.h"
#include "headless/compression/checksum.h"
#include "headless/failure/failure.h"
#include "headless/group/steps/batch_files.h"
#include "headless/group/steps/memory_need.h"
#include "headless/group/steps/odd_runs.h"
#include "headless/group/steps/rows_file.h"
#include "headless/group/steps/step_files.h"
#include "headless/group/steps/steps.h"
#include "headless/memory/available_memory.h"
#include "headless/run/stopwatch.h"

#include <cstdio>
#include <map>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

struct BatchRecord {
    std::string name;
    Json record;
};

[[noreturn]] void refuseMissing(const std::vector<std::string>& missing, const std::vector<std::string>& foreign) {
    if (missing.empty() && foreign.empty()) {
        refuseInput("no batch has been reduced yet; run znica group reduce first.");
    }
    if (!foreign.empty()) {
        refuseInput(listOfNames(foreign) + (foreign.size() == 1 ? " was" : " were") +
                    " reduced for another plan of this study; repeat znica group reduce with the same --batch.");
    }
    refuseInput(listOfNames(missing) + (missing.size() == 1 ? " is" : " are") +
                " missing; run znica group reduce with the --batch of each.");
}

// A complete set of batches of the study, the smallest if there are several. `foreign` are those of another plan.
std::vector<BatchRecord> completeBatches(const GroupStudy& study, std::vector<std::string>& foreign) {
    std::map<int, std::vector<BatchRecord>> sets; // by the number of batches
    for (const Batch& batch : recordedBatches(study.folder)) {
        const std::string name = batchName(batch);
        auto record = recordOf(reductionFolder(study.folder) / (name + ".json"), batchBasis(study, batch));
        if (record) {
            sets[batch.of].push_back({name, std::move(*record)});
        } else {
            foreign.push_back(name);
        }
    }
    for (auto& [of, set] : sets) {
        if (static_cast<int>(set.size()) == of) return std::move(set);
    }
    std::vector<std::string> missing;
    for (const auto& [of, set] : sets) {
        for (int number = 1; number <= of; ++number) {
            const Batch batch{number, of};
            if (!recordOf(reductionFolder(study.folder) / (batchName(batch) + ".json"), batchBasis(study, batch))) {
                missing.push_back(batchName(batch));
            }
        }
    }
    refuseMissing(missing, foreign);
}

} // namespace

void mergeBatches(const GroupOptions& options, UnfinishedWork& unfinished) {
    const Stopwatch total;
    const GroupStudy study = readStudy(options.folder);
    const auto folder = reductionFolder(study.folder);
    std::vector<std::string> foreign;
    const std::vector<BatchRecord> batches = completeBatches(study, foreign);
    std::string parts = study.id;
    Json names = Json::array();
    Json estimates = Json::array(); // of the runs, in their order
    for (const BatchRecord& batch : batches) {
        parts += ' ' + batch.record.at("Checksum").get<std::string>();
        names.push_back(batch.name);
        for (const Json& estimate : batch.record.at("ComponentsOfRuns")) estimates.push_back(estimate);
    }
    const std::string basis = checksumOf(parts);
    if (!options.force && recordOf(folder / "group.json", basis)) {
        if (!options.quiet) std::printf("The batches are merged already.\n");
        return;
    }
    StepFiles files(unfinished, folder, "group.json");
    for (const std::string& name : foreign) {
        for (const char* ending : {".json", ".rows"}) files.supersede(folder / (name + ending));
    }
    WorkerThreads threads(MatrixProducts::threadsFor(options.threads));
    const int most = study.rows();
    if (batches.size() > 1) requireFreeMemory("merging", 2 * reductionBytes(study, threads.threads()));
    GroupRows rows;
    for (const BatchRecord& batch : batches) {
        GroupRows next = readRows(folder / (batch.name + ".rows"), batch.record, most);
        if (rows.count() == 0) {
            rows = std::move(next);
        } else {
            absorbGroup(rows, next, most, threads);
        }
    }
    Json json = {{"Basis", basis}, {"Study", study.id}, {"Batches", names}, {"ComponentsOfRuns", estimates}};
    json.update(writeRows(files["group.rows"], rows));
    json["Seconds"] = total.seconds();
    json["PeakMemoryBytes"] = peakMemoryBytes();
    files.commit(json);
    if (options.quiet) return;
    std::printf("%zu %s merged into %d rows.\n", batches.size(), batches.size() == 1 ? "batch" : "batches",
                rows.count());
}

} // namespace zn::headless
