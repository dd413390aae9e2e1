#include "headless/group/steps/group_page.h"

#include "headless/group/steps/course_table.h"
#include "headless/group/steps/dual_regression_files.h"
#include "headless/group/steps/group_mean.h"
#include "headless/group/steps/step_files.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/report/coarse_map.h"
#include "headless/report/packed_map.h"
#include "headless/report/page_images.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <numeric>
#include <span>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr int kMapDigits = 3;    // of the group's maps
constexpr int kCourseDigits = 3; // of courses with variance 1

std::string name(const char* block, std::size_t number) {
    return std::string(block) + "-" + std::to_string(number);
}

std::vector<MapBlock> blocksOf(const GroupMaps& maps, std::size_t voxels) {
    std::vector<MapBlock> blocks;
    for (std::size_t map = 0; map < static_cast<std::size_t>(maps.count); ++map) {
        blocks.push_back(mapBlock(std::span(maps.values).subspan(map * voxels, voxels), kMapDigits));
    }
    return blocks;
}

// All courses of a run, one after another. Returns their decimals.
int addCourses(ReportPage& page, const fs::path& table, std::size_t run) {
    std::vector<float> all;
    for (const auto& course : readCourses(table)) all.insert(all.end(), course.begin(), course.end());
    const PackedMap packed = packMap(all, kCourseDigits);
    page.add(name("courses", run), packed.bytes);
    return packed.decimals;
}

// Returns the steps of the maps.
Json addRunMaps(ReportPage& page, const GroupStudy& study, const fs::path& file, std::size_t run) {
    const ImageHeader header = readImageHeader(file);
    requireSameGrid("the maps", header, study.grid);
    Json steps = Json::array();
    std::vector<float> inside(study.inside.size());
    forEachVolume(header, [&](const std::vector<float>& map) {
        std::ranges::transform(study.inside, inside.begin(), [&](auto v) { return map[static_cast<std::size_t>(v)]; });
        const CoarseMap packed = packCoarsely(inside);
        page.add(name("run", run) + name("-map", steps.size()), packed.bytes);
        steps.push_back(packed.step);
    });
    return steps;
}

// The numbers of the runs, those with outlying amplitudes first.
std::vector<std::size_t> byInterest(const std::vector<bool>& outlying) {
    std::vector<std::size_t> order(outlying.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_partition(order.begin(), order.end(), [&](std::size_t run) { return outlying[run]; });
    return order;
}

Json addRuns(ReportPage& page, const GroupStudy& study, const GroupTables& tables, std::size_t mostBytes) {
    Json runs = Json::array();
    for (std::size_t run = 0; run < study.runs.size(); ++run) {
        const fs::path folder = dualRegressionFolder(study, study.runs[run]);
        const DualRegressionFiles files(study.runs[run].name);
        const Json record = anyRecord(folder / files.record).value_or(Json::object());
        runs.push_back({{"name", study.runs[run].name},
                        {"volumes", study.runs[run].volumes},
                        {"map_file", (study.runs[run].results / files.z).generic_string()},
                        {"explained_percent", record.value("ExplainedPercent", Json())},
                        {"metrics_tsv", readWholeFile(folder / files.metrics)},
                        {"course_decimals", addCourses(page, folder / files.courses, run)},
                        {"map_steps", nullptr}});
    }
    const std::size_t most = page.size() + mostBytes;
    std::size_t largest = 0; // of the runs so far
    for (const std::size_t run : byInterest(tables.outlying)) {
        const std::size_t before = page.size();
        if (before + largest > most) break;
        const fs::path file = study.runs[run].results / DualRegressionFiles(study.runs[run].name).z;
        runs[run]["map_steps"] = addRunMaps(page, study, study.folder / file, run);
        largest = std::max(largest, page.size() - before);
    }
    return runs;
}

// What the page says about the plan. The runs are listed with their results; paths of this machine stay here.
Json planOf(const GroupStudy& study) {
    Json plan = Json::parse(readWholeFile(studyFile(study.folder)));
    plan.erase("Runs");
    return plan;
}

} // namespace

ReportPage makeGroupPage(const fs::path& templateFile, const GroupStudy& study, const GroupMaps& maps,
                         const GroupTables& tables, std::size_t mostBytes) {
    ReportPage page(templateFile);
    page.add("mask", std::as_bytes(std::span(study.mask)));
    Json data = {
        {"name", fs::absolute(study.folder).lexically_normal().filename().string()},
        {"version", ZNICA_VERSION},
        {"grid", {{"size", study.grid.size}, {"voxel_to_mm", study.grid.affine}, {"oriented", study.grid.oriented}}},
        {"voxels_inside", study.inside.size()},
        {"study", planOf(study)},
        {"decomposition", anyRecord(groupRecordFile(study.folder)).value_or(Json::object())},
        {"metrics_tsv", readWholeFile(study.folder / "desc-groupICA_metrics.tsv")},
        {"columns", Json::parse(readWholeFile(study.folder / "desc-groupICA_metrics.json"))},
        {"amplitudes_tsv", tables.amplitudes},
        {"netmats_tsv", tables.correlations}};
    const fs::path mean = groupMeanFile(study.folder);
    data["has_mean"] = fs::exists(mean); // not if it was planned by an earlier version
    if (data["has_mean"]) addMean(page, mean, study.grid);
    data["maps"] = addMaps(page, blocksOf(maps, study.inside.size()));
    data["runs"] = addRuns(page, study, tables, mostBytes);
    data["most_map_bytes"] = mostBytes;
    page.add("group", data.dump(-1, ' ', false, Json::error_handler_t::replace));
    return page;
}

} // namespace zn::headless
