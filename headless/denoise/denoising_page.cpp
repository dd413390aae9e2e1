#include "headless/denoise/denoising_page.h"

#include "headless/denoise/evidence_maps.h"
#include "headless/denoise/removed_parts.h"
#include "headless/report/packed_map.h"
#include "headless/report/write_report.h"

#include <algorithm>
#include <cmath>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

constexpr float kCarpetLimit = 3.0f; // standard deviations at which the greys end
constexpr int kDigits = 1;           // of the maps, which are read off at the colour bar

std::vector<std::byte> greysOf(const std::vector<float>& carpet) {
    std::vector<std::byte> greys(carpet.size());
    std::ranges::transform(carpet, greys.begin(), [](float value) {
        const float clipped = std::clamp(value, -kCarpetLimit, kCarpetLimit);
        return static_cast<std::byte>(std::lround(255.0f * (clipped + kCarpetLimit) / (2.0f * kCarpetLimit)));
    });
    return greys;
}

Json numberOrNull(double value) {
    return std::isfinite(value) ? Json(value) : Json(nullptr);
}

template <class Value> Json numbersOf(const std::vector<Value>& values) {
    Json list = Json::array();
    for (const Value value : values) list.push_back(numberOrNull(static_cast<double>(value)));
    return list;
}

Json rowsOf(const Quality& quality) {
    Json rows = Json::array();
    for (const QualityRow& row : qualityRows(quality)) {
        rows.push_back({{"measure", row.measure},
                        {"title", row.title},
                        {"units", row.units},
                        {"before", numberOrNull(row.values.before)},
                        {"after", numberOrNull(row.values.after)}});
    }
    return rows;
}

Json partsOf(const Denoising& run) {
    Json parts = Json::array();
    for (const RemovedPart& part : removedParts(run)) {
        parts.push_back({{"name", part.name},
                         {"removed", part.removed},
                         {"label", part.label},
                         {"reason", part.reason},
                         {"percent", numberOrNull(part.removedPercent)}});
    }
    return parts;
}

// Only the voxels of the mask, in their order, as for the maps of components.
Json addEvidenceMaps(ReportPage& page, const Denoising& run) {
    Json maps = Json::array();
    for (const EvidenceMap& map : evidenceMaps(run)) {
        std::vector<float> inside;
        for (std::size_t v = 0; v < run.mask.size(); ++v) {
            if (run.mask[v] != 0) inside.push_back(map.values[v]);
        }
        const PackedMap packed = packMap(inside, kDigits);
        page.add("evidence-" + std::to_string(maps.size()), packed.bytes);
        maps.push_back({{"title", map.title}, {"decimals", packed.decimals}});
    }
    return maps;
}

} // namespace

ReportPage denoisingPage(const Denoising& run, const Quality& quality) {
    ReportPage page = makeReport(*run.result);
    page.add("carpet-before", greysOf(run.carpet.before));
    page.add("carpet-after", greysOf(run.carpet.after));
    Json json;
    json["image"] = run.functional.file.filename().string();
    json["method"] = nameOf(run.options.method);
    json["tr_seconds"] = run.secondsPerVolume;
    json["dummy_scans"] = run.dummyScans;
    json["high_pass_seconds"] = run.options.highPassSeconds;
    json["quality"] = rowsOf(quality);
    json["parts"] = partsOf(run);
    json["notes"] = run.notes;
    json["dvars_before"] = numbersOf(run.cleaning.dvarsBefore);
    json["dvars_after"] = numbersOf(run.cleaning.dvarsAfter);
    json["framewise_displacement"] = run.fd ? numbersOf(*run.fd) : Json(nullptr);
    json["carpet"] = {{"rows", run.carpet.voxels.size()}, {"limit", kCarpetLimit}};
    json["maps"] = addEvidenceMaps(page, run);
    page.add("denoising", json.dump(-1, ' ', false, Json::error_handler_t::replace));
    return page;
}

} // namespace zn::headless
