#include "headless/run/run_record.h"

#include "headless/blas/blas_library.h"
#include "headless/failure/failure.h"
#include "headless/memory/available_memory.h"
#include "headless/result/metrics.h"
#include "headless/result/result_names.h"
#include "headless/run/recorded_input.h"
#include "headless/text/text_file.h"

#include <cmath>
#include <vector>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

Json estimateOf(const std::optional<ComponentEstimate>& estimate) {
    if (!estimate) return nullptr;
    return {{"MDL", estimate->byMdl},
            {"Laplace", estimate->byLaplace},
            {"OptimalThreshold", estimate->byThreshold},
            {"EffectiveSamples", estimate->effectiveSamples}};
}

Json metricsOf(const VolumeMap& map) {
    Json metrics = Json::object();
    for (std::size_t position = 0; position < std::min(kMetrics.size(), map.parameters.size()); ++position) {
        metrics[kMetrics[position].column] = numberOrNull(map.parameters[position]);
    }
    return metrics;
}

void addMeasures(const Run& run, std::size_t i, Json& component) {
    const ComponentMeasures& measures = run.measures[i];
    component["ExplainedVariancePercent"] = numberOrNull(static_cast<float>(measures.explainedPercent));
    component["MapSkewness"] = numberOrNull(static_cast<float>(measures.moments.skewness));
    component["MapKurtosis"] = numberOrNull(static_cast<float>(measures.moments.kurtosis));
    if (measures.confound.confound < 0) return;
    const auto confound = static_cast<std::size_t>(measures.confound.confound);
    component["Confound"] = {{"Name", run.confounds->names[confound]},
                             {"Correlation", numberOrNull(static_cast<float>(measures.confound.r))}};
}

Json componentsOf(const Run& run) {
    Json components = Json::array();
    const auto& found = run.log->facts().components();
    for (std::size_t i = 0; i < run.session.maps.maps().size(); ++i) {
        const VolumeMap& map = run.session.maps.maps()[i];
        Json component = {{"Name", componentName(static_cast<int>(i))}, {"PluginName", map.name.data()}};
        if (i < found.size()) {
            component["Iterations"] = found[i].iterations;
            component["Restarts"] = found[i].restarts;
            component["ElapsedSeconds"] = found[i].seconds;
        }
        if (run.repeats) {
            const Stability& stability = run.repeats->stability[i];
            component["StabilityIndex"] = numberOrNull(static_cast<float>(stability.index));
            component["StabilityRuns"] = stability.runs;
        }
        component["Metrics"] = metricsOf(map);
        addMeasures(run, i, component);
        components.push_back(std::move(component));
    }
    return components;
}

Json namesOf(const std::vector<Region>& regions) {
    Json names = Json::array();
    for (const Region& region : regions) names.push_back(region.name);
    return names;
}

// A path or a label may contain bytes that are not UTF-8; they are replaced rather than rejected.
std::string dump(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Json repeatsOf(const RepeatFacts& repeats) {
    return {{"Runs", repeats.seeds.size()},
            {"Converged", repeats.converged},
            {"Seeds", repeats.seeds},
            {"ComponentsFound", repeats.found}};
}

} // namespace

void writeDecomposition(const Run& run) {
    Json json;
    json["GeneratedBy"] = {
        {"Name", "znica"},
        {"Version", ZNICA_VERSION},
        {"Plugin",
         {{"Name", run.library->name()}, {"Version", run.library->version()}, {"File", run.library->file().string()}}}};
    json["Input"] = inputOf(run);
    json["Preparation"] = preparationOf(run);
    json["Settings"] = settingsOf(run);
    json["ComponentEstimate"] = estimateOf(run.estimate);
    json["Seed"] = run.seed;
    json["Threads"] = run.products->threads();
    json["BLAS"] = {{"Library", blasLibrary()}, {"Kernels", blasKernels()}};
    if (run.repeats) json["Repeats"] = repeatsOf(*run.repeats);
    json["ComponentsFound"] = run.componentsFound();
    const auto kept = run.log->facts().retainedVariancePercent();
    json["RetainedVariancePercent"] = kept && std::isfinite(*kept) ? Json(*kept) : Json(nullptr);
    json["RetainedVarianceOverTimePercent"] = numberOrNull(static_cast<float>(run.keptPercent));
    json["Predictors"] = run.session.design.names;
    json["Confounds"] = run.confounds ? Json(run.confounds->names) : Json::array();
    json["Regions"] = namesOf(run.session.regions);
    json["Components"] = componentsOf(run);
    json["Eigenvalues"] = run.temporalEigenvalues;
    json["ElapsedSeconds"] = {{"Reading", run.seconds.reading},
                              {"Plugin", run.seconds.plugin},
                              {"Writing", run.seconds.writing},
                              {"Total", run.total.seconds()}};
    json["PeakMemoryBytes"] = peakMemoryBytes();
    json["PredictedPeakMemoryBytes"] = run.predictedBytes;
    writeTextFile((*run.files)[ResultFile::kDecomposition], dump(json));
}

void writeStatus(const Run& run) {
    const Json json = {{"status", run.foundAll() ? "done" : "gave up"},
                       {"exit_status", static_cast<int>(run.foundAll() ? ExitStatus::kDone : ExitStatus::kGaveUp)},
                       {"partial", !run.foundAll()},
                       {"components_asked", run.eigenvalues.count()},
                       {"components_found", run.componentsFound()}};
    writeTextFile((*run.files)[ResultFile::kStatus], dump(json));
}

} // namespace zn::headless
