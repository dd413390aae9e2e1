#include "headless/denoise/evidence_maps.h"

#include "headless/nifti/image_writer.h"
#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

constexpr char kTsnr[] = "Mean over time by standard deviation over time; 0 in voxels that were not denoised.";
constexpr char kRemoved[] = "Variance over time that denoising removed; negative where it grew, 0 in voxels that were "
                            "not denoised.";

} // namespace

std::vector<EvidenceMap> evidenceMaps(const Denoising& run) {
    const Cleaning& cleaning = run.cleaning;
    const auto ratio = [&](const std::vector<float>& sd) {
        std::vector<float> map(sd.size());
        for (std::size_t v = 0; v < sd.size(); ++v) map[v] = sd[v] > 0.0f ? cleaning.mean[v] / sd[v] : 0.0f;
        return map;
    };
    std::vector<float> removed(cleaning.mean.size());
    for (std::size_t v = 0; v < removed.size(); ++v) {
        if (cleaning.sdBefore[v] <= 0.0f) continue;
        const float share = cleaning.sdAfter[v] / cleaning.sdBefore[v];
        removed[v] = 100.0f * (1.0f - share * share);
    }
    return {{ResultFile::kTsnrBefore, ResultFile::kTsnrBeforeDescription, "Temporal SNR before", kTsnr, "",
             ratio(cleaning.sdBefore)},
            {ResultFile::kTsnrAfter, ResultFile::kTsnrAfterDescription, "Temporal SNR after", kTsnr, "",
             ratio(cleaning.sdAfter)},
            {ResultFile::kRemovedVariance, ResultFile::kRemovedVarianceDescription, "Variance removed, per cent",
             kRemoved, "per cent of the variance before", removed}};
}

void writeMaps(const Denoising& run) {
    const ResultFiles& files = *run.files;
    for (const EvidenceMap& map : evidenceMaps(run)) {
        ImageWriter writer(files[map.file], *run.functional.image, {1, NIFTI_TYPE_FLOAT32, 0.0, map.title});
        writer.write(map.values);
        writer.close();
        Json json = {{"Description", map.meaning}};
        if (*map.units) json["Units"] = map.units;
        json["Sources"] = Json::array({run.functional.file.string()});
        writeTextFile(files[map.description], json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
    }
}

} // namespace zn::headless
