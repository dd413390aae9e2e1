#include "headless/denoise/denoise_stages.h"

#include "headless/failure/failure.h"
#include "headless/memory/available_memory.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/nifti/voxel_values.h"
#include "headless/prepare/high_pass.h"
#include "headless/report/whole_result.h"
#include "headless/result/require_outside.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using namespace nlohmann::literals;

constexpr char kFd[] = "framewise_displacement"; // the column's name in fMRIPrep's tables
constexpr char kNoColumns[] = "none";

std::string shortNumber(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// "ICA_02, ICA_05"
template <class Wanted>
std::string namesOf(const CourseColumns& courses, const std::vector<Verdict>& verdicts, const Wanted& wanted) {
    std::string names;
    for (std::size_t i = 0; i < verdicts.size(); ++i) {
        if (wanted(verdicts[i])) names += (names.empty() ? "" : ", ") + courses.names[i];
    }
    return names;
}

void requireInputsOutsideOutput(const DenoiseOptions& options) {
    if (!options.force) return;
    requireOutside(options.out, {options.result, options.functional, options.labels, options.confounds});
}

// The analysis may have removed drifts that the image still has.
void noteFilter(Denoising& run, const nlohmann::ordered_json& record) {
    const auto seconds = record.value("/Preparation/HighPassSeconds"_json_pointer, nlohmann::ordered_json(0.0));
    if (run.options.highPassSeconds > 0.0 || !seconds.is_number() || seconds.get<double>() <= 0.0) return;
    const std::string text = shortNumber(seconds.get<double>());
    run.say("The analysis removed drifts slower than " + text +
            " s first; this image keeps them, unless you add --high-pass " + text + ".");
}

// What the analysis recorded: dummy scans, repetition time, its own high-pass filter. Returns the number of volumes.
int readFacts(Denoising& run) {
    const auto record = readRecord(*run.result);
    const auto& input = record["Input"];
    const auto omitted = input.value("DummyScans", nlohmann::ordered_json(0));
    run.secondsPerVolume = input["RepetitionTimeMilliseconds"].get<double>() / 1000.0;
    if (!omitted.is_number_integer() || !(run.secondsPerVolume >= 0.001 && run.secondsPerVolume <= 20.0)) {
        refuseFile((*run.result)[ResultFile::kDecomposition],
                   "is damaged: dummy scans or repetition time cannot be used; create the result again.");
    }
    run.dummyScans = omitted.get<int>();
    noteFilter(run, record);
    return input["Volumes"].get<int>();
}

// `analysed`: volumes of the analysis.
void readFunctional(Denoising& run, int analysed) {
    const ImageHeader components = readImageHeader((*run.result)[ResultFile::kComponents]);
    run.functional = readImageHeader(run.options.functional);
    requireRealNumbers(run.functional);
    requireSameGrid("functional image", run.functional, components);
    if (run.dummyScans < 0 || run.volumes() != analysed) {
        refuseFile(run.functional.file,
                   "has " + counted(static_cast<std::size_t>(run.functional.volumes), "volume") +
                       ", but the result is of " + std::to_string(analysed) +
                       (run.dummyScans > 0 ? " after " + std::to_string(run.dummyScans) + " dummy scans" : "") +
                       "; name the image that was analysed, or another version of it.");
    }
    if (analysed < 3) refuseFile(run.functional.file, "has too few volumes to be denoised.");
    const ImageHeader mask = readImageHeader((*run.result)[ResultFile::kMask]);
    requireSameGrid("mask", mask, components);
    run.mask = readMask(mask);
}

// The series, the volumes that are read or written together, and the maps.
void requireMemory(const Denoising& run) {
    constexpr std::int64_t kTogether = 32;
    constexpr std::int64_t kMapBytes = 40; // per voxel
    const std::int64_t needed =
        run.functional.voxels() * (4 * (run.functional.volumes + kTogether) + kMapBytes) + (std::int64_t{64} << 20);
    const auto available = availableMemoryBytes();
    if (!available || needed <= *available) return;
    char text[160];
    constexpr double kGib = 1073741824.0;
    std::snprintf(text, sizeof text, " needs %.1f GiB of memory, but only %.1f GiB are free; free some memory.",
                  static_cast<double>(needed) / kGib, static_cast<double>(*available) / kGib);
    throw Failure(ExitStatus::kMemory, run.functional.file.string() + text);
}

void readCourseColumns(Denoising& run) {
    run.courses = readCourses(*run.result);
    const std::size_t rows = run.courses.values.front().size();
    if (rows == static_cast<std::size_t>(run.volumes())) return;
    refuseFile(run.courses.file, "is damaged: it has " + std::to_string(rows) + " rows for " +
                                     std::to_string(run.volumes()) + " volumes; create the result again.");
}

// Components have the same names in every result, so labels of another one would pass unnoticed.
void noteForeignLabels(Denoising& run) {
    constexpr std::string_view kEnding = "_desc-ICA_labels.tsv"; // of the file that the report exports
    const std::string name = run.options.labels.filename().string();
    if (!name.ends_with(kEnding) || name == run.result->stem() + std::string(kEnding)) return;
    run.say("Labels: " + name + " has the name of another result than that of " + run.result->stem() +
            "; check that they belong together.");
}

void readLabels(Denoising& run) {
    const DenoiseOptions& options = run.options;
    noteForeignLabels(run);
    const auto& names = run.courses.names;
    run.verdicts = options.labels.empty() ? verdictsFor(options.rejected, names) : readVerdicts(options.labels, names);
    const auto& verdicts = run.verdicts;
    const auto rejected = [](const Verdict& verdict) { return verdict.rejected; };
    const auto unsure = [](const Verdict& verdict) { return verdict.label == "unsure"; };
    const auto unlabelled = [](const Verdict& verdict) { return verdict.label.empty(); };
    const int count = run.rejectedCount();
    run.say("Components: " + std::to_string(count) + " of " + std::to_string(names.size()) + " rejected" +
            (count > 0 ? ": " + namesOf(run.courses, verdicts, rejected) : "") + ".");
    if (options.labels.empty()) return;
    const auto left = std::ranges::count_if(verdicts, unlabelled);
    if (left > 0) {
        run.say("Components: " + std::to_string(left) +
                " without a label, kept: " + namesOf(run.courses, verdicts, unlabelled) + ".");
    }
    const std::string doubtful = namesOf(run.courses, verdicts, unsure);
    if (!doubtful.empty()) run.say("Components: labelled unsure, kept: " + doubtful + ".");
}

void requirePresent(const Confounds& confounds, const std::filesystem::path& file) {
    for (std::size_t i = 0; i < confounds.names.size(); ++i) {
        const auto& values = confounds.values[i];
        const auto missing = std::ranges::find_if(values, [](float value) { return std::isnan(value); });
        if (missing == values.end()) continue;
        refuseFile(file, "has n/a in the column \"" + confounds.names[i] + "\" (analysed volume " +
                             std::to_string(missing - values.begin() + 1) +
                             "), which cannot be regressed out; choose other columns with --columns.");
    }
}

void readNuisance(Denoising& run) {
    const DenoiseOptions& options = run.options;
    if (options.highPassSeconds > 0.0) {
        if (options.highPassSeconds < 2.0 * run.secondsPerVolume) {
            throw Failure(ExitStatus::kInput, "--high-pass " + shortNumber(options.highPassSeconds) +
                                                  " s is below two repetition times of " +
                                                  shortNumber(run.secondsPerVolume) +
                                                  " s; give a longer cut-off in seconds, such as 128.");
        }
        run.cosines = cosinesBelow(options.highPassSeconds, run.volumes(), run.secondsPerVolume);
        run.say("High-pass filter: " + counted(static_cast<std::size_t>(run.cosines), "cosine") + " slower than " +
                shortNumber(options.highPassSeconds) + " s.");
    }
    if (options.confounds.empty()) return;
    const AnalysedVolumes volumes{run.functional.volumes, run.dummyScans, run.secondsPerVolume};
    run.fd = readConfoundIfAny(options.confounds, kFd, volumes);
    if (options.confoundColumns == std::vector<std::string>{kNoColumns}) return;
    run.confounds = readConfounds(options.confounds, options.confoundColumns, volumes);
    requirePresent(*run.confounds, options.confounds);
    const std::size_t ignored = run.confounds->ignored.size();
    run.say("Confounds: " + counted(run.confounds->names.size(), "column") + " of " + options.confounds.string() +
            (ignored == 0 ? "." : "; " + counted(ignored, "other") + " constant or without values."));
}

} // namespace

void readInputs(Denoising& run) {
    requireReadable(run.options.functional);
    requireInputsOutsideOutput(run.options);
    run.result = ResultFiles::in(run.options.result);
    const int analysed = readFacts(run);
    readFunctional(run, analysed);
    requireMemory(run);
    if (run.dummyScans > 0) {
        run.say("Dummy scans: " + counted(static_cast<std::size_t>(run.dummyScans), "volume") + " copied unchanged.");
    }
    readCourseColumns(run);
    readLabels(run);
    readNuisance(run);
}

} // namespace zn::headless
