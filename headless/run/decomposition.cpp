#include "headless/run/decomposition.h"

#include "headless/host/blas_library.h"
#include "headless/nifti/voxel_values.h"
#include "headless/result/eigenvalue_file.h"
#include "headless/result/metrics.h"
#include "headless/result/metrics_table.h"
#include "headless/result/result_names.h"
#include "headless/text/text_file.h"

#include <cmath>
#include <cstdlib>

#include <nlohmann/json.hpp>
#include <sys/resource.h>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::filesystem::path& path) {
    return path.empty() ? Json(nullptr) : Json(path.string());
}

// Single precision with the digits that it has: 0.0001, not 9.999999747378752e-05.
Json numberOrNull(float number) {
    return std::isfinite(number) ? Json(std::strtod(cellText(number).c_str(), nullptr)) : Json(nullptr);
}

const char* nameOf(Nonlinearity nonlinearity) {
    switch (nonlinearity) {
    case Nonlinearity::kGauss:
        return "gauss";
    case Nonlinearity::kCube:
        return "cube";
    case Nonlinearity::kTanh:
        break;
    }
    return "tanh";
}

Json inputOf(const RunFacts& facts) {
    const ImageHeader& image = *facts.functional;
    return {{"File", image.file.string()},
            {"Size", image.size},
            {"Volumes", facts.session->series.volumes},
            {"DummyScans", facts.options->dummyScans},
            {"RepetitionTime", facts.repetition->seconds},
            {"RepetitionTimeSource", facts.repetition->source},
            {"RepetitionTimeMilliseconds", facts.session->millisecondsPerVolume},
            {"StoredType", nifti_datatype_to_string(image.image->datatype)},
            {"Scaled", isScaled(*image.image)},
            {"VoxelsAnalysed", facts.voxels()},
            {"VoxelsDropped", {{"NotFinite", facts.left.notFinite}, {"Constant", facts.left.constant}}},
            {"Notes", facts.inputNotes}};
}

std::string maskText(const RunOptions& options) {
    if (options.maskSource == MaskSource::kFile) return options.mask.string();
    return options.maskSource == MaskSource::kAutomatic ? "auto" : "none";
}

// The option as given: the number that it came to stands beside it.
Json componentsAsked(const RunOptions& options) {
    switch (options.componentCount) {
    case ComponentCount::kEstimated:
        return "auto";
    case ComponentCount::kMost:
        return "max";
    case ComponentCount::kGiven:
        break;
    }
    return options.components();
}

Json estimateOf(const ComponentEstimate* estimate) {
    if (!estimate) return nullptr;
    return {{"MDL", estimate->byMdl},
            {"Laplace", estimate->byLaplace},
            {"OptimalThreshold", estimate->byThreshold},
            {"EffectiveSamples", estimate->effectiveSamples}};
}

Json settingsOf(const RunOptions& options) {
    return {{"Mask", maskText(options)},
            {"ComponentsAsked", componentsAsked(options)},
            {"Components", options.components()},
            {"FirstEigenvalue", options.firstEigenvalue},
            {"LastEigenvalue", options.lastEigenvalue},
            {"Nonlinearity", nameOf(options.nonlinearity)},
            {"Epsilon", numberOrNull(options.epsilon)},
            {"MaxIterations", options.maxIterations},
            {"DesignMatrix", textOrNull(options.design)},
            {"Regions", textOrNull(options.regions)},
            {"RegionNames", textOrNull(options.regionNames)},
            {"ClusterSize", options.clusterSize ? Json(*options.clusterSize) : Json(nullptr)},
            {"ZThreshold", numberOrNull(options.zThreshold)},
            {"Label", options.label ? Json(*options.label) : Json(nullptr)}};
}

Json metricsOf(const VolumeMap& map) {
    Json metrics = Json::object();
    for (std::size_t position = 0; position < std::min(kMetrics.size(), map.parameters.size()); ++position) {
        metrics[kMetrics[position].column] = numberOrNull(map.parameters[position]);
    }
    return metrics;
}

Json componentsOf(const RunFacts& facts) {
    Json components = Json::array();
    const auto& found = facts.log->components();
    for (std::size_t i = 0; i < facts.session->maps.maps().size(); ++i) {
        const VolumeMap& map = facts.session->maps.maps()[i];
        Json component = {{"Name", componentName(static_cast<int>(i))}, {"PluginName", map.name.data()}};
        if (i < found.size()) {
            component["Iterations"] = found[i].iterations;
            component["Restarts"] = found[i].restarts;
            component["ElapsedSeconds"] = found[i].seconds;
        }
        if (facts.repeats) {
            const Stability& stability = facts.repeats->stability[i];
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

// A path or a label may hold bytes that are no UTF-8; they are replaced rather than refused.
std::string dump(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

std::int64_t peakMemoryBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return std::int64_t{usage.ru_maxrss} * 1024;
}

void writeDecomposition(const std::filesystem::path& file, const RunFacts& facts) {
    const auto eigenvalueFile = std::filesystem::path(facts.session->dialog.texts[0]).replace_extension(".eig");
    Json json;
    json["GeneratedBy"] = {{"Name", "znica"},
                           {"Version", ZNICA_VERSION},
                           {"Plugin",
                            {{"Name", facts.library->name()},
                             {"Version", facts.library->version()},
                             {"File", facts.library->file().string()}}}};
    json["Input"] = inputOf(facts);
    json["Settings"] = settingsOf(*facts.options);
    json["ComponentEstimate"] = estimateOf(facts.estimate);
    json["Seed"] = facts.seed;
    json["Threads"] = facts.threads;
    json["BLAS"] = {{"Library", blasLibrary()}, {"Kernels", blasKernels()}};
    if (facts.repeats) {
        json["Repeats"] = {{"Runs", facts.repeats->seeds.size()},
                           {"Converged", facts.repeats->converged},
                           {"Seeds", facts.repeats->seeds},
                           {"ComponentsFound", facts.repeats->found}};
    }
    json["ComponentsFound"] = facts.found();
    const auto kept = facts.log->retainedVariancePercent();
    json["RetainedVariancePercent"] = kept && std::isfinite(*kept) ? Json(*kept) : Json(nullptr);
    json["Predictors"] = facts.session->design.names;
    json["Regions"] = namesOf(facts.session->regions);
    json["Components"] = componentsOf(facts);
    json["Eigenvalues"] = readEigenvalues(facts.pluginFolder / eigenvalueFile, facts.session->series.volumes);
    json["ElapsedSeconds"] = {{"Reading", facts.secondsReading},
                              {"Plugin", facts.secondsPlugin},
                              {"Writing", facts.secondsWriting},
                              {"Total", facts.secondsTotal}};
    json["PeakMemoryBytes"] = facts.peakMemoryBytes;
    json["PredictedPeakMemoryBytes"] = facts.predictedMemoryBytes;
    writeTextFile(file, dump(json));
}

void writeStatus(const std::filesystem::path& file, const RunFacts& facts, ExitStatus status) {
    const Json json = {{"status", status == ExitStatus::kDone ? "done" : "gave up"},
                       {"exit_status", static_cast<int>(status)},
                       {"partial", status != ExitStatus::kDone},
                       {"components_asked", facts.options->components()},
                       {"components_found", facts.found()}};
    writeTextFile(file, dump(json));
}

} // namespace zn::headless
