#include "headless/compression/checksum.h"
#include "headless/failure/failure.h"
#include "headless/group/common_mask.h"
#include "headless/group/steps/earlier_files.h"
#include "headless/group/steps/group_mean.h"
#include "headless/group/steps/group_study.h"
#include "headless/group/steps/odd_runs.h"
#include "headless/group/steps/run_problems.h"
#include "headless/group/steps/run_volumes.h"
#include "headless/group/steps/step_files.h"
#include "headless/group/steps/steps.h"
#include "headless/group/steps/study_place.h"
#include "headless/mask/brain_mask.h"
#include "headless/nifti/image_writer.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/nifti/voxel_values.h"
#include "headless/prepare/cut_off.h"
#include "headless/run/repetition_time.h"
#include "headless/text/short_texts.h"
#include "headless/text/text_file.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <utility>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr double kLeastShare = 0.6; // of the median mask that all runs have to have in common

// Changes with the list, the images and the options. An image is recognised by its size and time of modification here;
// its contents are checked whenever it is read.
std::string basisOf(const GroupOptions& options) {
    std::string text = std::to_string(options.secondsPerVolume.value_or(0.0)) + ' ' +
                       std::to_string(options.dummyScans) + ' ' + std::to_string(options.preparation.smoothMm) + ' ' +
                       std::to_string(options.preparation.highPassSeconds) + ' ' +
                       std::to_string(static_cast<int>(options.preparation.scaling)) + '\n';
    const auto add = [&](const fs::path& file) {
        std::error_code error;
        text += fs::absolute(file).string() + ' ' + std::to_string(fs::file_size(file, error)) + ' ' +
                std::to_string(fs::last_write_time(file, error).time_since_epoch().count()) + '\n';
    };
    for (const ListedRun& run : options.runs) {
        text += run.name + '\n';
        if (!run.results.empty()) text += fs::absolute(run.results).string() + '\n';
        add(run.image);
        if (!run.mask.empty()) add(run.mask);
    }
    if (!options.mask.empty()) add(options.mask);
    return checksumOf(text);
}

void requireNames(const std::vector<ListedRun>& runs) {
    if (runs.size() < 2) {
        refuseInput("a group analysis needs at least two runs; list more, or analyse one with znica run.");
    }
    std::map<std::string, fs::path> known;
    for (const ListedRun& run : runs) {
        if (run.name.empty() || run.name.find('/') != std::string::npos || run.name.front() == '.') {
            refuseInput("\"" + run.name + "\" cannot be the name of a run; use letters, digits, _ and -.");
        }
        const auto [other, isNew] = known.emplace(run.name, run.image);
        if (isNew) continue;
        refuseInput("two runs are named " + run.name + ": " + other->second.string() + " and " + run.image.string() +
                    "; name them in the column name of a table given with --runs.");
    }
}

RunHeader headerOf(const ListedRun& listed, const GroupOptions& options) {
    RunHeader run{listed, readImageHeader(listed.image), 0.0};
    requireRealNumbers(run.header);
    const int volumes = run.header.volumes - options.dummyScans;
    if (volumes < 3) {
        refuseInput(listed.image.string() + " has " + std::to_string(run.header.volumes) +
                    (run.header.volumes == 1 ? " volume" : " volumes") +
                    ", too few for a group analysis; list 4D images" +
                    (options.dummyScans > 0 ? ", or omit fewer with --dummy-scans." : "."));
    }
    run.secondsPerVolume = repetitionTime(options.secondsPerVolume, run.header).seconds;
    requireCutOff(options.preparation.highPassSeconds, run.secondsPerVolume);
    return run;
}

std::vector<unsigned char> requestedMask(const RunHeader& run, const GroupOptions& options, const RunVoxels& voxels) {
    const fs::path file = run.listed.mask.empty() ? options.mask : run.listed.mask;
    if (file.empty()) return brainMask(voxels.mean, run.header.size);
    const ImageHeader header = readImageHeader(file);
    requireSameGrid("mask", header, run.header);
    return readMask(header);
}

// The voxels of one run that can be analysed.
std::vector<bool> maskOf(const RunHeader& run, const GroupOptions& options, const RunVoxels& voxels) {
    const auto requested = requestedMask(run, options, voxels);
    const bool percent = options.preparation.scaling == Scaling::kPercent;
    std::vector<bool> mask(requested.size());
    std::int64_t count = 0;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        mask[v] = requested[v] != 0 && voxels.usable[v] != 0 && (!percent || voxels.mean[v] > 0.0f);
        count += mask[v] ? 1 : 0;
    }
    if (count > 0) return mask;
    refuseInput(run.listed.image.string() +
                " has no voxel that can be analysed: within its mask all are constant, not finite" +
                (percent ? " or without a positive mean" : "") + "; check the image, or leave the run out.");
}

// Relative to the study's folder, so that all may be moved together.
fs::path resultsOf(const ListedRun& run, const fs::path& folder) {
    if (run.results.empty()) return kDualRegression;
    const auto absolute = [](const fs::path& path) { return fs::weakly_canonical(fs::absolute(path)); };
    return absolute(run.results).lexically_relative(absolute(folder));
}

void requireDifferent(const std::vector<GroupRun>& runs) {
    std::map<std::string, const GroupRun*> known;
    for (const GroupRun& run : runs) {
        const auto [other, isNew] = known.emplace(run.checksum, &run);
        if (isNew) continue;
        refuseInput(other->second->name + " and " + run.name + " hold the same data (" + other->second->image.string() +
                    ", " + run.image.string() + "); list the run once.");
    }
}

// The runs that lack the most voxels, the worst first.
std::string culprits(const CommonMask& mask, const std::vector<GroupRun>& runs) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (mask.lacking[i] > mask.median / 20) order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return mask.lacking[a] > mask.lacking[b]; });
    std::vector<std::string> names;
    names.reserve(order.size());
    for (const std::size_t i : order) {
        names.push_back(runs[i].name + " lacks " + std::to_string(mask.lacking[i]) + " voxels that most have");
    }
    return names.empty() ? "their masks overlap too little" : listOfNames(names);
}

void requireEnough(const CommonMask& mask, const std::vector<GroupRun>& runs) {
    if (static_cast<double>(mask.count) < kLeastShare * static_cast<double>(mask.median)) {
        refuseInput("the runs have only " + std::to_string(mask.count) +
                    " voxels in common, less than 60 % of the median mask of " + std::to_string(mask.median) + ": " +
                    culprits(mask, runs) + "; leave such runs out, or give all runs one mask with --mask.");
    }
}

void say(const GroupOptions& options, const GroupStudy& study, const CommonMask& mask) {
    if (options.quiet) return;
    std::printf("%zu runs, TR %s, %lld voxels in common (median mask %lld); the reduction keeps %d rows.\n",
                study.runs.size(), secondsText(study.secondsPerVolume).c_str(), static_cast<long long>(mask.count),
                static_cast<long long>(mask.median), study.rows());
}

void writeMean(const fs::path& file, const std::vector<float>& mean, const nifti_image& grid) {
    if (mean.empty()) return;
    ImageWriter writer(file, grid, {1, NIFTI_TYPE_FLOAT32, 0.0, "mean of the runs' mean images"});
    writer.write(mean);
    writer.close();
}

void supersedeEarlierPlan(const GroupStudy& study, const std::string& basis, StepFiles& files) {
    const auto earlier = anyRecord(studyFile(study.folder));
    if (earlier && earlier->dump() == Json::parse(studyText(study, basis)).dump()) return;
    std::vector<fs::path> superseded = filesOfEarlierPlan(study.folder);
    if (superseded.empty()) return;
    std::fprintf(stderr, "znica: %s was planned with other runs or options; what was computed for them is removed.\n",
                 study.folder.c_str());
    for (fs::path& file : superseded) files.supersede(std::move(file));
}

void writeStudy(const GroupStudy& study, const CommonMask& mask, const std::vector<float>& mean,
                const std::string& basis, const nifti_image& grid, UnfinishedWork& unfinished) {
    StepFiles files(unfinished, study.folder, studyFile("").string());
    writeMean(files[groupMeanFile("").string()], mean, grid);
    ImageWriter writer(files[studyMask("").string()], grid, {1, NIFTI_TYPE_UINT8, 0.0, "voxels that all runs have"});
    writer.write(mask.voxels);
    writer.close();
    supersedeEarlierPlan(study, basis, files);
    files.commit(studyText(study, basis));
}

} // namespace

void planStudyOfGroup(const GroupOptions& options, UnfinishedWork& unfinished) {
    requireStudyPlace(options.folder);
    requireNames(options.runs);
    const std::string basis = basisOf(options);
    if (!options.force && recordOf(studyFile(options.folder), basis)) {
        if (!options.quiet) std::printf("The study is planned already.\n");
        return;
    }
    std::vector<RunHeader> headers;
    RunProblems problems;
    for (const ListedRun& run : options.runs) problems.collect([&] { headers.push_back(headerOf(run, options)); });
    problems.throwIfAny();
    requireOneKind(headers);

    GroupStudy study;
    study.folder = options.folder;
    study.secondsPerVolume = headers.front().secondsPerVolume;
    study.dummyScans = options.dummyScans;
    study.preparation = options.preparation;
    GroupMean mean;
    std::vector<std::vector<bool>> masks;
    const auto read = [&](const RunHeader& run) {
        const RunVoxels voxels = readRunVoxels(run.header, options.dummyScans);
        masks.push_back(maskOf(run, options, voxels));
        mean.add(voxels.mean, masks.back());
        study.runs.push_back({run.listed.name, fs::absolute(run.listed.image).lexically_normal(),
                              run.header.volumes - options.dummyScans, voxels.checksum,
                              resultsOf(run.listed, options.folder)});
    };
    for (const RunHeader& run : headers) problems.collect([&] { read(run); });
    problems.throwIfAny();
    requireDifferent(study.runs);
    const CommonMask mask = commonMask(masks);
    requireEnough(mask, study.runs);
    study.inside.resize(static_cast<std::size_t>(mask.count));
    writeStudy(study, mask, mean.values(), basis, *headers.front().header.image, unfinished);
    say(options, study, mask);
}

} // namespace zn::headless
