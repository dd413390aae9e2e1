#include "headless/study/result_descriptions.h"

#include "headless/result/result_files.h"
#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

struct Described {
    ResultFile file;
    const char* ending; ///< of the JSON file
    const char* text;
};

constexpr Described kDescribed[] = {
    {ResultFile::kComponents, "_desc-ICA_components.json", "Spatial component maps, one per volume"},
    {ResultFile::kCentrotypes, "_desc-ICA_centrotypes.json",
     "The map most similar to the others of each cluster of components over all repeated runs"},
    {ResultFile::kMixing, "_desc-ICA_mixing.json", "Time courses of the components, rescaled to 0..1, one per column"},
    {ResultFile::kDimension, "_desc-ICA_dimension.json",
     "Eigenvalues and the criteria for the number of components, one number per row"},
    {ResultFile::kDesign, "_desc-ICA_design.json", "Predictors with which the time courses were compared"},
    {ResultFile::kMask, "_desc-brain_mask.json", "Voxels that were analysed"},
    {ResultFile::kMean, "_desc-mean_bold.json", "Mean over the analysed volumes"},
};

std::string sourceOf(const PlannedRun& run) {
    return "bids:" + run.dataset + ":" + (run.folder / run.image.filename()).string();
}

Json describe(const PlannedRun& run, const Described& described) {
    Json json = {{"Description", described.text}, {"Sources", Json::array({sourceOf(run)})}};
    if (described.file == ResultFile::kMask) json["Type"] = "Brain";
    if (described.file == ResultFile::kMean) {
        json["SkullStripped"] = false;
        if (const auto task = run.entities.label("task")) json["TaskName"] = *task;
    }
    return json;
}

} // namespace

std::vector<std::string> descriptionNames(const std::string& run) {
    std::vector<std::string> names;
    for (const Described& described : kDescribed) names.push_back(run + described.ending);
    return names;
}

void writeDescriptions(const PlannedRun& run, const std::filesystem::path& result) {
    const ResultFiles files(result, run.name);
    for (const Described& described : kDescribed) {
        if (!files.has(described.file)) continue;
        writeTextFile(result / (run.name + described.ending),
                      describe(run, described).dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
    }
}

} // namespace zn::headless
