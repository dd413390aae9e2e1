#include "headless/denoise/denoise_stages.h"

#include "headless/denoise/denoising_memory.h"
#include "headless/denoise/foreign_image.h"
#include "headless/failure/failure.h"
#include "headless/memory/available_memory.h"
#include "headless/nifti/image_writer.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/nifti/voxel_values.h"
#include "headless/report/whole_result.h"
#include "headless/result/require_outside.h"
#include "headless/text/byte_sizes.h"
#include "headless/text/input_file.h"
#include "headless/text/short_texts.h"

#include <cstdio>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using namespace nlohmann::literals;

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
    const auto exact = input.value("RepetitionTime", nlohmann::ordered_json()); // older records lack it
    run.secondsPerVolume =
        exact.is_number() ? exact.get<double>() : input["RepetitionTimeMilliseconds"].get<double>() / 1000.0;
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
    if (run.functional.volumes > ImageWriter::kMostElements) {
        refuseFile(run.functional.file, "has " + std::to_string(run.functional.volumes) +
                                            " volumes, but a denoised image can hold at most " +
                                            std::to_string(ImageWriter::kMostElements) +
                                            "; split it before the analysis.");
    }
    if (analysed < 3) refuseFile(run.functional.file, "has too few volumes to be denoised.");
    const ImageHeader mask = readImageHeader((*run.result)[ResultFile::kMask]);
    requireSameGrid("mask", mask, components);
    run.mask = readMask(mask);
}

void requireMemory(const Denoising& run) {
    const std::int64_t needed = denoisingBytes(run.functional);
    const auto available = usableMemoryBytes();
    if (!available || needed <= *available) return;
    char text[160];
    std::snprintf(text, sizeof text, " needs %.1f GiB of memory, but only %.1f GiB are free; free some memory.",
                  static_cast<double>(needed) / kBytesPerGib, static_cast<double>(*available) / kBytesPerGib);
    throw Failure(ExitStatus::kMemory, run.functional.file.string() + text);
}

void readCourseColumns(Denoising& run) {
    run.courses = readCourses(*run.result);
    const std::size_t rows = run.courses.values.front().size();
    if (rows == static_cast<std::size_t>(run.volumes())) return;
    refuseFile(run.courses.file, "is damaged: it has " + std::to_string(rows) + " rows for " +
                                     std::to_string(run.volumes()) + " volumes; create the result again.");
}

} // namespace

void readInputs(Denoising& run) {
    requireReadable(run.options.functional);
    requireInputsOutsideOutput(run.options);
    run.result = ResultFiles::of(run.options.functional, run.options.result);
    const std::string foreign = noteOnForeignImage(run.options.functional, run.result->stem());
    if (!foreign.empty()) run.say(foreign);
    const int analysed = readFacts(run);
    readFunctional(run, analysed);
    requireMemory(run);
    if (run.dummyScans > 0) {
        run.say("Dummy scans: " + counted(static_cast<std::size_t>(run.dummyScans), "volume") + " copied unchanged.");
    }
    readCourseColumns(run);
}

} // namespace zn::headless
