#include "headless/denoise/evidence_maps.h"

#include "headless/nifti/image_writer.h"

namespace zn::headless {

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
    return {{ResultFile::kTsnrBefore, "Temporal SNR before", ratio(cleaning.sdBefore)},
            {ResultFile::kTsnrAfter, "Temporal SNR after", ratio(cleaning.sdAfter)},
            {ResultFile::kRemovedVariance, "Variance removed, per cent", removed}};
}

void writeMaps(const Denoising& run) {
    const ResultFiles& files = *run.files;
    for (const EvidenceMap& map : evidenceMaps(run)) {
        ImageWriter writer(files[map.file], *run.functional.image, {1, NIFTI_TYPE_FLOAT32, 0.0, map.title});
        writer.write(map.values);
        writer.close();
    }
}

} // namespace zn::headless
