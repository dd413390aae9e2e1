#include "headless/simulate/recovery.h"

#include "headless/failure/failure.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/result/result_files.h"
#include "headless/statistics/correlation.h"

#include <cmath>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

// Names of the sources in the order of their maps.
std::vector<std::string> sourceNames(const ResultFiles& files, int sources) {
    const auto truth = nlohmann::json::parse(files.text(ResultFile::kTruth), nullptr, false);
    std::vector<std::string> names;
    if (truth.is_object() && truth.contains("sources")) {
        for (const auto& source : truth["sources"]) {
            const bool named = source.is_object() && source.contains("name") && source["name"].is_string();
            if (named) names.push_back(source["name"].get<std::string>());
        }
    }
    if (names.size() == static_cast<std::size_t>(sources)) return names;
    throw Failure(ExitStatus::kInput, files[ResultFile::kTruth].string() + " is damaged: it does not name the " +
                                          std::to_string(sources) + " sources; create the sample again.");
}

} // namespace

std::vector<Recovery> recover(std::span<const float> truth, std::span<const float> found,
                              std::span<const unsigned char> mask) {
    const auto inside = [&](std::size_t v) { return mask[v] != 0; };
    std::vector<Recovery> recoveries(truth.size() / mask.size());
    for (std::size_t source = 0; source < recoveries.size(); ++source) {
        const auto trueMap = truth.subspan(source * mask.size(), mask.size());
        for (std::size_t c = 0; c < found.size() / mask.size(); ++c) {
            const double r = std::fabs(correlation(trueMap, found.subspan(c * mask.size(), mask.size()), inside));
            if (r > recoveries[source].correlation) recoveries[source] = {static_cast<int>(c), r};
        }
    }
    return recoveries;
}

std::vector<SourceScore> scoreResult(const std::filesystem::path& result, const std::filesystem::path& truth) {
    const ImageHeader found = readImageHeader(ResultFiles::in(result)[ResultFile::kComponents]);
    const ResultFiles sample = ResultFiles::in(truth, ResultFile::kTrueMaps);
    const ImageHeader sources = readImageHeader(sample[ResultFile::kTrueMaps]);
    const ImageHeader mask = readImageHeader(sample[ResultFile::kMask]);
    requireSameGrid("result", found, sources);
    requireSameGrid("mask", mask, sources);
    const std::vector<std::string> names = sourceNames(sample, sources.volumes);

    std::vector<SourceScore> scores;
    for (const Recovery& recovery : recover(readAllVolumes(sources), readAllVolumes(found), readMask(mask))) {
        scores.push_back({names[scores.size()], recovery});
    }
    return scores;
}

} // namespace zn::headless
