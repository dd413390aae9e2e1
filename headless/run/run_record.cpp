#include "headless/run/run_record.h"

#include "headless/blas/blas_library.h"
#include "headless/failure/failure.h"
#include "headless/memory/available_memory.h"
#include "headless/result/metrics.h"
#include "headless/result/result_names.h"
#include "headless/run/plugin_files.h"
#include "headless/run/recorded_input.h"
#include "headless/text/text_file.h"

#include <cmath>
#include <fstream>
#include <vector>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

Json estimateOf(const std::optional<ComponentEstimate>& estimate) {
    if (!estimate) return nullptr;
    const ParallelAnalysis& parallel = estimate->parallel;
    return {{"ParallelAnalysis", parallel.count},
            {"MDL", estimate->byMdl},
            {"Laplace", estimate->byLaplace},
            {"OptimalThreshold", estimate->byThreshold},
            {"EffectiveSamples", estimate->effectiveSamples},
            {"Noise",
             {{"HasEdge", parallel.hasEdge},
              {"LargestEigenvalue", parallel.noise.edge},
              {"FWHMVoxels", parallel.noise.fwhm},
              {"Lag1Autocorrelation", parallel.noise.correlation},
              {"IndependentVoxels", parallel.noise.independentVoxels}}}};
}

Json metricsOf(const VolumeMap& map) {
    Json metrics = Json::object();
    for (std::size_t position = 0; position < std::min(kMetrics.size(), map.parameters.size()); ++position) {
        metrics[kMetrics[position].column] = numberOrNull(map.parameters[position]);
    }
    return metrics;
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

// In descending order, from the plug-in's eigenvalue file, whose length has been checked: T doubles, little-endian,
// followed by the eigenvectors. Empty when the plug-in left no such file.
std::vector<double> eigenvaluesOf(const Run& run) {
    std::vector<double> values(static_cast<std::size_t>(run.volumes));
    std::ifstream stream(pluginFile(run, ResultFile::kPluginEigenvalues), std::ios::binary);
    stream.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(sizeof(double) * values.size()));
    if (!stream) values.clear();
    return values;
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
    json["Predictors"] = run.session.design.names;
    json["Regions"] = namesOf(run.session.regions);
    json["Components"] = componentsOf(run);
    json["Eigenvalues"] = eigenvaluesOf(run);
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
