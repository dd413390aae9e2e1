#include "headless/run/run_inputs.h"

#include "headless/design/region_names.h"
#include "headless/failure/failure.h"
#include "headless/nifti/label_image.h"
#include "headless/nifti/mask_image.h"
#include "headless/nifti/same_grid.h"
#include "headless/nifti/voxel_values.h"
#include "headless/result/result_names.h"
#include "headless/run/region_coordinates.h"
#include "host/voi_records.h"

#include <cmath>

namespace zn::headless {

namespace {

[[noreturn]] void refuse(const std::string& text) {
    throw Failure(ExitStatus::kInput, text);
}

// The names that the plug-in gets to see. It keeps texts of at most 255 characters and derives file names of its own
// from the first, so they are short and without a folder: its files go into the current one.
DialogFields dialogFields(const RunOptions& options) {
    const std::string stem = imageStem(options.functional).substr(0, 200);
    DialogFields dialog;
    dialog.texts[0] = stem + ".vtc";
    dialog.texts[2] = stem + "_ica.vmp";
    if (!options.design.empty()) dialog.texts[3] = "design.rtc";
    if (!options.regions.empty()) dialog.texts[4] = "regions.voi";

    dialog.integers[0] = 1; // run FastICA
    dialog.integers[5] = options.nonlinearity == Nonlinearity::kCube ? 1 : 0;
    dialog.integers[3] = options.nonlinearity == Nonlinearity::kGauss ? 1 : 0;
    dialog.integers[8] = options.maxIterations;
    setEigenvalueRange(options, dialog);
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

} // namespace

void setEigenvalueRange(const RunOptions& options, DialogFields& dialog) {
    dialog.integers[6] = options.firstEigenvalue;
    dialog.integers[7] = options.lastEigenvalue;
    dialog.integers[9] = options.components();
}

ImageHeader readFunctionalHeader(RunOptions& options) {
    ImageHeader header = readImageHeader(options.functional);
    const std::string file = options.functional.string();
    if (header.volumes < 2) {
        refuse(file + " holds a single volume (" + sizeText(header) +
               "); an analysis needs a 4D image, a volume a time point.");
    }
    requireRealNumbers(header);
    const int volumes = header.volumes - options.dummyScans;
    if (volumes < 2) {
        refuse(file + " holds " + std::to_string(header.volumes) + " volumes, of which --dummy-scans " +
               std::to_string(options.dummyScans) + " leaves fewer than 2; leave out fewer.");
    }
    if (options.componentCount == ComponentCount::kMost) options.lastEigenvalue = volumes;
    if (options.componentCount != ComponentCount::kGiven) return header;
    const std::string have = " the " + std::to_string(volumes) + " volumes of " + file;
    if (options.components() > volumes) {
        refuse(std::to_string(options.components()) + " components are more than" + have +
               "; ask for fewer with --components.");
    }
    if (options.lastEigenvalue > volumes) {
        refuse("the eigenvalues " + std::to_string(options.firstEigenvalue) + ":" +
               std::to_string(options.lastEigenvalue) + " reach beyond" + have + "; there are as many as volumes.");
    }
    return header;
}

Session makeSession(const RunOptions& options, const ImageHeader& functional, double secondsPerVolume) {
    Session session;
    session.dialog = dialogFields(options);
    session.answers = {options.clusterSize, options.zThreshold, options.label};
    session.grid = functional.size;
    session.millisecondsPerVolume = static_cast<int>(std::lround(1000.0 * secondsPerVolume));
    if (options.maskSource == MaskSource::kFile) {
        const ImageHeader mask = readImageHeader(options.mask);
        requireSameGrid("mask", mask, functional);
        session.mask = readMask(mask);
    }
    if (!options.design.empty())
        session.design = readDesignMatrix(options.design, functional.volumes - options.dummyScans);
    if (!options.regions.empty()) {
        session.regions = readRegions(options, functional);
        session.coordinateSpace = kCentredSpace;
    }
    return session;
}

} // namespace zn::headless
