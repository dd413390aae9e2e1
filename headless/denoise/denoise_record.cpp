#include "headless/denoise/denoise_record.h"

#include "headless/blas/blas_library.h"
#include "headless/denoise/file_hash.h"
#include "headless/failure/failure.h"
#include "headless/result/result_names.h"
#include "headless/text/input_file.h"
#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

struct MethodFiles {
    ResultFile image;
    ResultFile sidecar;
};

MethodFiles filesOf(DenoiseMethod method) {
    switch (method) {
    case DenoiseMethod::kAggressive:
        return {ResultFile::kAggressive, ResultFile::kAggressiveSidecar};
    case DenoiseMethod::kOrthogonalised:
        return {ResultFile::kOrthogonalised, ResultFile::kOrthogonalisedSidecar};
    case DenoiseMethod::kNonAggressive:
        break;
    }
    return {ResultFile::kNonAggressive, ResultFile::kNonAggressiveSidecar};
}

const char* explanationOf(DenoiseMethod method) {
    switch (method) {
    case DenoiseMethod::kAggressive:
        return "Regressed out the rejected components with all variance that they share with the kept ones.";
    case DenoiseMethod::kOrthogonalised:
        return "Regressed the kept components out of the rejected ones, then regressed out what was left of those.";
    case DenoiseMethod::kNonAggressive:
        break;
    }
    return "Regressed on all components together, then subtracted the part of the rejected ones.";
}

// What the original image's sidecar says stays true. A damaged one is as good as none: the image does not depend on it.
Json originalSidecar(const fs::path& image) {
    try {
        Json sidecar = Json::parse(readWholeFile(image.parent_path() / (imageStem(image) + ".json")), nullptr, false);
        if (sidecar.is_object()) return sidecar;
    } catch (const Failure&) { // there is none
    }
    return Json::object();
}

Json rejectedOf(const Denoising& run) {
    Json rejected = Json::array();
    for (std::size_t i = 0; i < run.verdicts.size(); ++i) {
        const Verdict& verdict = run.verdicts[i];
        if (!verdict.rejected) continue;
        rejected.push_back({{"Name", run.courses.names[i]},
                            {"Number", i + 1},
                            {"Reason", verdict.reason.empty() ? Json(nullptr) : Json(verdict.reason)}});
    }
    return rejected;
}

Json unlabelledOf(const Denoising& run) {
    Json names = Json::array();
    for (std::size_t i = 0; i < run.verdicts.size(); ++i) {
        if (!run.options.labels.empty() && run.verdicts[i].label.empty()) names.push_back(run.courses.names[i]);
    }
    return names;
}

Json inputsOf(const Denoising& run) {
    Json inputs = Json::array();
    std::vector<fs::path> files = {run.functional.file, run.courses.file};
    if (run.functional.file != run.functional.image->iname) files.emplace_back(run.functional.image->iname);
    for (const fs::path& file : {run.options.labels, run.options.confounds}) {
        if (!file.empty()) files.push_back(file);
    }
    for (const fs::path& file : files) inputs.push_back({{"File", file.string()}, {"SHA256", fileHash(file)}});
    return inputs;
}

std::string dump(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace

ResultFile imageFileOf(DenoiseMethod method) {
    return filesOf(method).image;
}

void writeSidecar(const Denoising& run) {
    Json json = originalSidecar(run.functional.file);
    json["RepetitionTime"] = run.secondsPerVolume;
    json["Description"] = "Functional image after removal of rejected independent components.";
    json["GeneratedBy"] = {{"Name", "znica"}, {"Version", ZNICA_VERSION}};
    json["Denoising"] = {{"Method", nameOf(run.options.method)},
                         {"MethodDescription", explanationOf(run.options.method)},
                         {"Components", run.verdicts.size()},
                         {"Rejected", rejectedOf(run)},
                         {"KeptWithoutLabel", unlabelledOf(run)},
                         {"Confounds", run.confounds ? Json(run.confounds->names) : Json::array()},
                         {"HighPassSeconds", run.options.highPassSeconds},
                         {"CosinesRemoved", run.cosines},
                         {"DummyScans", run.dummyScans},
                         {"RegressionColumns", run.removal.designColumns},
                         {"RegressionRank", run.removal.designRank},
                         {"DegreesOfFreedomLost", run.removal.lostDegrees},
                         {"DegreesOfFreedomLeft", run.volumes() - 1 - run.removal.lostDegrees},
                         {"VoxelsInMask", run.count(VoxelKind::kInMask)},
                         {"VoxelsNotFinite", run.count(VoxelKind::kNotFinite)},
                         {"VoxelsConstant", run.count(VoxelKind::kConstant)},
                         {"BLAS", {{"Library", blasLibrary()}, {"Kernels", blasKernels()}}},
                         {"Notes", run.notes}};
    json["Inputs"] = inputsOf(run);
    writeTextFile((*run.files)[filesOf(run.options.method).sidecar], dump(json));
}

void writeDatasetFiles(const Denoising& run) {
    const Json description = {{"Name", "Functional image without rejected independent components"},
                              {"BIDSVersion", "1.8.0"},
                              {"DatasetType", "derivative"},
                              {"GeneratedBy", Json::array({{{"Name", "znica"}, {"Version", ZNICA_VERSION}}})}};
    const ResultFiles& files = *run.files;
    writeTextFile(files[ResultFile::kDatasetDescription], dump(description));
    writeTextFile(files[ResultFile::kBidsIgnore], ignoredNames({ResultPlace::kDenoised, ResultPlace::kRunAndDenoised}));
}

} // namespace zn::headless
