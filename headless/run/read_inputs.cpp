#include "headless/run/stages.h"

#include "headless/design/read_design.h"
#include "headless/design/region_names.h"
#include "headless/dimension/parallel_analysis.h"
#include "headless/events/events_beside_image.h"
#include "headless/failure/failure.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/nifti/voxel_values.h"
#include "headless/result/require_outside.h"
#include "headless/result/result_names.h"
#include "headless/run/region_coordinates.h"
#include "headless/text/input_file.h"
#include "headless/text/short_texts.h"
#include "host/voi_records.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

void requireInputsOutsideResult(const Run& run) {
    const RunOptions& options = run.options;
    if (!options.force) return;
    requireOutside(options.out, {options.functional, options.mask, run.design.file, options.confounds, options.regions,
                                 options.regionNames, options.plugin});
}

ImageHeader readFunctionalHeader(const RunOptions& options) {
    ImageHeader header = readImageHeader(options.functional);
    const std::string file = options.functional.string();
    if (header.volumes < 2) {
        refuseInput(file + " holds a single volume (" + sizeText(header) +
                    "); an analysis needs a 4D image with one volume per time point.");
    }
    requireRealNumbers(header);
    if (header.volumes - options.dummyScans < 2) {
        refuseInput(file + " holds " + std::to_string(header.volumes) + " volumes, of which --dummy-scans " +
                    std::to_string(options.dummyScans) + " leaves fewer than 2; omit fewer.");
    }
    return header;
}

// "--high-pass 4 leaves", "--high-pass 128 and --scale sd leave"
std::string whatLeaves(const Run& run) {
    const PreparationOptions& options = run.options.preparation;
    const bool mean = options.scaling == Scaling::kUnitVariance;
    char text[32] = "";
    if (run.cosines > 0) std::snprintf(text, sizeof text, "--high-pass %.6g", options.highPassSeconds);
    if (!mean) return std::string(text) + " leaves";
    return run.cosines > 0 ? std::string(text) + " and --scale sd leave" : "--scale sd leaves";
}

// The range as far as it is known before the data are read: for --components auto the largest possible one.
EigenvalueRange eigenvalueRange(const Run& run) {
    const RunOptions& options = run.options;
    const int volumes = run.volumes;
    const int dimensions = preparedDimensions(run);
    if (options.componentCount == ComponentCount::kMaximum) return {1, dimensions};
    if (options.componentCount == ComponentCount::kEstimated) return {1, mostComponents(dimensions)};
    const EigenvalueRange& range = options.eigenvalues;
    const std::string have = " the " + std::to_string(volumes) + " volumes of " + options.functional.string();
    if (range.count() > volumes) {
        refuseInput(std::to_string(range.count()) + " components are more than" + have +
                    "; request fewer with "
                    "--components.");
    }
    if (range.last > volumes) {
        refuseInput("the eigenvalues " + std::to_string(range.first) + ":" + std::to_string(range.last) + " exceed" +
                    have + "; there is one eigenvalue per volume.");
    }
    if (range.last > dimensions) {
        refuseInput(std::to_string(range.last) + (range.first == 1 ? " components" : " eigenvalues") +
                    " are more than the " + std::to_string(dimensions) + " that " + whatLeaves(run) + " of" + have +
                    "; request fewer.");
    }
    return range;
}

// The names passed to the plug-in. It stores texts of at most 255 characters and derives the names of its own files
// from the first, so the names are short and have no folder: its files go into the current one.
DialogFields dialogFields(const Run& run) {
    const RunOptions& options = run.options;
    const std::string stem = imageStem(options.functional).substr(0, 200);
    DialogFields dialog;
    dialog.texts[0] = stem + ".vtc";
    dialog.texts[2] = stem + "_ica.vmp";
    if (!run.design.file.empty()) dialog.texts[3] = "design.rtc";
    if (!options.regions.empty()) dialog.texts[4] = "regions.voi";

    dialog.integers[0] = 1; // run FastICA
    dialog.integers[5] = options.nonlinearity == Nonlinearity::kCube ? 1 : 0;
    dialog.integers[3] = options.nonlinearity == Nonlinearity::kGauss ? 1 : 0;
    dialog.integers[8] = options.maxIterations;
    dialog.floats[0] = options.epsilon;
    return dialog;
}

std::vector<Region> readRegions(const RunOptions& options, const ImageHeader& functional) {
    const ImageHeader header = readImageHeader(options.regions);
    requireSameGrid("label image", header, functional);
    std::map<std::int32_t, std::string> names;
    if (!options.regionNames.empty()) names = readRegionNames(options.regionNames);
    std::vector<Region> regions;
    for (const auto& [label, voxels] : readLabels(header)) {
        const auto name = names.find(label);
        regions.push_back({name != names.end() ? name->second : std::to_string(label),
                           regionCoordinates(voxels, functional.size, kCentredSpace)});
    }
    return regions;
}

AnalysedVolumes analysedVolumes(const Run& run) {
    return {run.functional.volumes, run.options.dummyScans, run.repetition.seconds};
}

// The file of --design, which is the events file beside the image for --design auto.
fs::path designFile(const RunOptions& options) {
    if (!options.designBesideImage) return options.design;
    return eventsBesideImage(options.functional, imageStem(options.functional));
}

void addDesign(Run& run) {
    if (run.design.file.empty()) return;
    Design design = readDesign(run.design.file, analysedVolumes(run));
    run.design.format = design.format;
    run.design.omittedRows = design.omittedRows;
    run.session.design = std::move(design.matrix);
    run.notes.say("Design: " + counted(run.session.design.names.size(), "predictor") + " from " +
                  run.design.file.string() + " (" + design.format + ").");
    for (const std::string& note : design.notes) run.notes.remark({"design", note});
}

void addConfounds(Run& run) {
    if (run.options.confounds.empty()) return;
    run.confounds = readConfounds(run.options.confounds, run.options.confoundColumns, analysedVolumes(run));
    const std::size_t ignored = run.confounds->ignored.size();
    run.notes.say("Confounds: " + counted(run.confounds->names.size(), "column") + " of " +
                  run.options.confounds.string() +
                  (ignored == 0 ? "." : "; " + counted(ignored, "other") + " constant or without values."));
}

Session makeSession(const Run& run) {
    const RunOptions& options = run.options;
    Session session;
    session.dialog = dialogFields(run);
    session.answers = {options.clusterSize, options.zThreshold, options.label};
    session.grid = run.functional.size;
    session.millisecondsPerVolume = static_cast<int>(std::lround(1000.0 * run.repetition.seconds));
    if (options.maskSource == MaskSource::kFile) {
        const ImageHeader mask = readImageHeader(options.mask);
        requireSameGrid("mask", mask, run.functional);
        session.mask = readMask(mask);
    }
    if (!options.regions.empty()) {
        session.regions = readRegions(options, run.functional);
        session.coordinateSpace = kCentredSpace;
    }
    return session;
}

} // namespace

std::vector<unsigned char> neededVoxels(const Run& run) {
    const bool onlyMask = run.options.maskSource == MaskSource::kFile && run.session.regions.empty();
    return onlyMask ? run.session.mask : std::vector<unsigned char>();
}

void readInputs(Run& run) {
    requireReadable(run.options.functional); // before a missing events file is reported
    run.design.file = designFile(run.options);
    requireInputsOutsideResult(run);
    run.functional = readFunctionalHeader(run.options);
    run.volumes = run.functional.volumes - run.options.dummyScans;
    run.repetition = repetitionTime(run.options.secondsPerVolume, run.functional, run.options.sidecars);
    checkPreparation(run);
    run.eigenvalues = eigenvalueRange(run);
    run.session = makeSession(run);
    run.notes.say(inputNote(run.functional, run.volumes, run.repetition));
    for (const Remark& remark : orientationRemarks(run.functional)) run.notes.remark(remark);
    addDesign(run);
    addConfounds(run);
    for (const Remark& remark : repetitionTimeRemarks(run.repetition)) run.notes.remark(remark);
    for (const Remark& remark : bandRemarks(run.session.millisecondsPerVolume)) run.notes.remark(remark);
}

} // namespace zn::headless
