#include "headless/cli/score_command.h"

#include "headless/text/input_file.h"
#include "headless/nifti/mask_image.h"
#include "headless/nifti/same_grid.h"
#include "headless/nifti/single_volume.h"
#include "headless/result/result_names.h"
#include "headless/simulate/recovery.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <system_error>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// The one file of a folder whose name ends so.
fs::path fileEndingIn(const std::string& ending, const fs::path& folder) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        if (entry.path().filename().string().ends_with(ending)) return entry.path();
    }
    throw Failure(ExitStatus::kInput,
                  folder.string() + " holds no file that ends in " + ending + "; check the folder.");
}

// Names of the sources in the order of their maps.
std::vector<std::string> sourceNames(const fs::path& folder, int sources) {
    const fs::path file = folder / "truth.json";
    const auto truth = nlohmann::json::parse(readWholeFile(file), nullptr, false);
    std::vector<std::string> names;
    if (truth.is_object() && truth.contains("sources")) {
        for (const auto& source : truth["sources"]) {
            const bool named = source.is_object() && source.contains("name") && source["name"].is_string();
            if (named) names.push_back(source["name"].get<std::string>());
        }
    }
    if (names.size() == static_cast<std::size_t>(sources)) return names;
    throw Failure(ExitStatus::kInput, file.string() + " is damaged: it does not name the " + std::to_string(sources) +
                                          " sources; make the sample again.");
}

} // namespace

ExitStatus scoreCommand(const fs::path& result, const fs::path& truth) {
    const ImageHeader found = readImageHeader(fileEndingIn("_desc-ICA_components.nii.gz", result));
    const ImageHeader sources = readImageHeader(fileEndingIn("_desc-truth_components.nii.gz", truth));
    const ImageHeader mask = readImageHeader(fileEndingIn("_desc-brain_mask.nii.gz", truth));
    requireSameGrid("result", found, sources);
    requireSameGrid("mask", mask, sources);
    const std::vector<std::string> names = sourceNames(truth, sources.volumes);

    const auto recoveries = recover(readAllVolumes(sources), readAllVolumes(found), readMask(mask));
    std::printf("%-16s %-10s %s\n", "source", "component", "|r| of the maps");
    double worst = 1.0;
    for (std::size_t i = 0; i < recoveries.size(); ++i) {
        const Recovery& recovery = recoveries[i];
        const std::string component = recovery.component < 0 ? "none" : componentName(recovery.component);
        std::printf("%-16s %-10s %.4f\n", names[i].c_str(), component.c_str(), recovery.correlation);
        worst = std::min(worst, recovery.correlation);
    }
    std::printf("lowest: %.4f\n", worst);
    return ExitStatus::kDone;
}

} // namespace zn::headless
