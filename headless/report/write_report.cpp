#include "headless/report/write_report.h"

#include "headless/failure/failure.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/report/map_blocks.h"
#include "headless/report/page_images.h"
#include "headless/report/report_page.h"
#include "headless/report/whole_result.h"
#include "headless/result/component_pairs.h"
#include "headless/result/result_files.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// The analysed voxels: the mask that the run wrote, or else the voxels where some map is not 0.
std::vector<unsigned char> analysedVoxels(const ResultFiles& files, const ImageHeader& components) {
    if (files.has(ResultFile::kMask)) {
        const ImageHeader mask = readImageHeader(files[ResultFile::kMask]);
        requireSameGrid("mask", mask, components);
        return readMask(mask);
    }
    std::vector<unsigned char> mask(static_cast<std::size_t>(components.voxels()));
    forEachVolume(components, [&](const std::vector<float>& map) {
        for (std::size_t v = 0; v < mask.size(); ++v) mask[v] |= map[v] != 0.0f;
    });
    return mask;
}

std::vector<MapBlock> blocksOf(const ImageHeader& components, const std::vector<unsigned char>& mask) {
    const int digits = mapDigits(std::count(mask.begin(), mask.end(), 1), components.volumes);
    std::vector<MapBlock> blocks;
    forEachVolume(components, [&](const std::vector<float>& map) { blocks.push_back(mapBlock(map, mask, digits)); });
    return blocks;
}

// Record and tables, checked against each other.
Json tablesOf(const ResultFiles& files, const ImageHeader& components) {
    Json run;
    run["name"] = files.stem();
    run["decomposition"] = readRecord(files);
    run["columns"] = readColumnDescriptions(files);
    requireCompleteTables(files, components.volumes, run["decomposition"]["Input"]["Volumes"].get<int>());
    run["metrics_tsv"] = files.text(ResultFile::kMetrics);
    run["mixing_tsv"] = files.text(ResultFile::kMixing);
    run["design_tsv"] = files.textIfAny(ResultFile::kDesign);
    return run;
}

// The components of another result, in the mask of the first one: tables, maps after those of the first, and which
// components match.
Json addCompared(ReportPage& page, const fs::path& folder, const fs::path& compared, const ImageHeader& own,
                 const std::vector<unsigned char>& mask) {
    const ResultFiles files = ResultFiles::in(compared);
    const ImageHeader components = readImageHeader(files[ResultFile::kComponents]);
    Json pairs = Json::array();
    for (const ComponentPair& pair : pairComponents(folder, compared)) { // requires the same grid
        if (pair.a >= 0 && pair.b >= 0) pairs.push_back({{"a", pair.a}, {"b", pair.b}, {"r", pair.r}});
    }
    Json run = tablesOf(files, components);
    run["folder"] = fs::canonical(compared).filename().string();
    run["maps"] = addMaps(page, blocksOf(components, mask), static_cast<std::size_t>(own.volumes));
    run["pairs"] = std::move(pairs);
    return run;
}

} // namespace

ReportPage makeReport(const ResultFiles& files, const fs::path& templateFile, const fs::path& compared,
                      const std::optional<PageImages>& images) {
    const fs::path found = templateFile.empty() ? findReportTemplate() : templateFile;
    if (found.empty()) {
        throw Failure(ExitStatus::kOther,
                      "the report template is not installed with this znica; install npm and rebuild, "
                      "or install the complete package.");
    }
    ReportPage page(found);
    const ImageHeader components = readImageHeader(files[ResultFile::kComponents]);
    const std::vector<unsigned char> mask = analysedVoxels(files, components);

    Json run = tablesOf(files, components);
    run["grid"] = {{"size", components.size}, {"voxel_to_mm", components.affine}, {"oriented", components.oriented}};
    run["voxels_inside"] = std::count(mask.begin(), mask.end(), 1);
    run["has_mean"] = files.has(ResultFile::kMean);
    if (images) {
        page.addPacked("mean", images->mean);
    } else if (run["has_mean"]) {
        addMean(page, files[ResultFile::kMean], components);
    }
    page.add("mask", std::as_bytes(std::span(mask)));
    run["maps"] = addMaps(page, images ? images->maps : blocksOf(components, mask));
    if (!compared.empty()) run["compared"] = addCompared(page, files.folder(), compared, components, mask);
    page.add("run", run.dump(-1, ' ', false, Json::error_handler_t::replace));
    return page;
}

void writeReport(const fs::path& folder, const fs::path& templateFile) {
    const ResultFiles files = ResultFiles::in(folder);
    makeReport(files, templateFile).write(files[ResultFile::kReport]);
}

} // namespace zn::headless
