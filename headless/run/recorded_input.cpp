#include "headless/run/recorded_input.h"

#include "headless/nifti/voxel_values.h"
#include "headless/text/text_file.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

Json textOrNull(const std::filesystem::path& path) {
    return path.empty() ? Json(nullptr) : Json(path.string());
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

const char* nameOf(Scaling scaling) {
    return scaling == Scaling::kPercent ? "percent" : scaling == Scaling::kUnitVariance ? "sd" : "none";
}

Json notesOf(const std::vector<Remark>& remarks) {
    Json notes = Json::array();
    for (const Remark& remark : remarks) notes.push_back({{"Code", remark.code}, {"Text", remark.text}});
    return notes;
}

std::string maskText(const RunOptions& options) {
    if (options.maskSource == MaskSource::kFile) return options.mask.string();
    return options.maskSource == MaskSource::kAutomatic ? "auto" : "none";
}

// The option as given; the resulting number is recorded separately.
Json requestedComponents(const Run& run) {
    switch (run.options.componentCount) {
    case ComponentCount::kEstimated:
        return "auto";
    case ComponentCount::kMaximum:
        return "max";
    case ComponentCount::kGiven:
        break;
    }
    return run.eigenvalues.count();
}

} // namespace

Json numberOrNull(float number) {
    return std::isfinite(number) ? Json(std::strtod(cellText(number).c_str(), nullptr)) : Json(nullptr);
}

Json inputOf(const Run& run) {
    const ImageHeader& image = run.functional;
    return {{"File", image.file.string()},
            {"Size", image.size},
            {"Oriented", image.oriented},
            {"Volumes", run.volumes},
            {"DummyScans", run.options.dummyScans},
            {"RepetitionTime", run.repetition.seconds},
            {"RepetitionTimeSource", run.repetition.source},
            {"RepetitionTimeMilliseconds", run.session.millisecondsPerVolume},
            {"StoredType", nifti_datatype_to_string(image.image->datatype)},
            {"Scaled", isScaled(*image.image)},
            {"VoxelsAnalysed", run.voxelsAnalysed()},
            {"VoxelsDropped",
             {{"NotFinite", run.mask.excluded.notFinite + run.mask.excludedWhenPrepared.notFinite},
              {"Constant", run.mask.excluded.constant + run.mask.excludedWhenPrepared.constant}}},
            {"Notes", notesOf(run.notes.remarks())}};
}

Json preparationOf(const Run& run) {
    const PreparationOptions& options = run.options.preparation;
    const auto& smoothness = run.preparation.smoothnessMm;
    return {{"SmoothingAsked", options.smoothIfNeeded ? Json("auto") : Json(options.smoothMm)},
            {"SmoothingFWHM", run.preparation.smoothedMm},
            {"EstimatedFWHM", smoothness ? Json(*smoothness) : Json(nullptr)},
            {"HighPassSeconds", options.highPassSeconds},
            {"CosinesRemoved", run.cosines},
            {"Scaling", nameOf(options.scaling)}};
}

Json settingsOf(const Run& run) {
    const RunOptions& options = run.options;
    return {{"Mask", maskText(options)},
            {"ComponentsAsked", requestedComponents(run)},
            {"Components", run.eigenvalues.count()},
            {"FirstEigenvalue", run.eigenvalues.first},
            {"LastEigenvalue", run.eigenvalues.last},
            {"Nonlinearity", nameOf(options.nonlinearity)},
            {"Epsilon", numberOrNull(options.epsilon)},
            {"MaxIterations", options.maxIterations},
            {"DesignMatrix", textOrNull(run.design.file)},
            {"DesignFormat", run.design.file.empty() ? Json(nullptr) : Json(run.design.format)},
            {"DesignRowsOmitted", run.design.omittedRows},
            {"Confounds", textOrNull(options.confounds)},
            {"Regions", textOrNull(options.regions)},
            {"RegionNames", textOrNull(options.regionNames)},
            {"ClusterSize", options.clusterSize ? Json(*options.clusterSize) : Json(nullptr)},
            {"ZThreshold", numberOrNull(options.zThreshold)},
            {"Label", options.label ? Json(*options.label) : Json(nullptr)}};
}

} // namespace zn::headless
