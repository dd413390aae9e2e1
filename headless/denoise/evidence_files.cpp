#include "headless/denoise/evidence_files.h"

#include "headless/denoise/evidence_maps.h"
#include "headless/denoise/evidence_table.h"
#include "headless/denoise/removed_parts.h"
#include "headless/text/text_file.h"

#include <cmath>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

void writeQuality(const ResultFiles& files, const Quality& quality) {
    EvidenceColumn measure{"measure",
                           "DVARS: root mean square over the voxels of the mask of the change from one "
                           "volume to the next. Temporal SNR: mean over time by standard deviation over "
                           "time, over the voxels of the mask.",
                           "",
                           {}};
    EvidenceColumn before{"before", "Value for the image as it was.", "", {}};
    EvidenceColumn after{"after", "Value for the denoised image.", "", {}};
    EvidenceColumn units{"units", "Units of both values.", "", {}};
    for (const QualityRow& row : qualityRows(quality)) {
        measure.cells.emplace_back(row.measure);
        before.cells.push_back(cellOf(row.values.before));
        after.cells.push_back(cellOf(row.values.after));
        units.cells.emplace_back(*row.units ? row.units : "n/a");
    }
    writeEvidenceTable(files[ResultFile::kDenoiseQc], files[ResultFile::kDenoiseQcDescription],
                       {measure, before, after, units});
}

void writeVolumes(const Denoising& run, const ResultFiles& files) {
    const auto cells = [&run](const auto& values) {
        std::vector<std::string> texts(static_cast<std::size_t>(run.dummyScans), "n/a");
        for (const auto value : values) texts.push_back(cellOf(static_cast<double>(value)));
        return texts;
    };
    constexpr char kDvars[] = "Root mean square over the voxels of the mask of the change since the previous volume, ";
    constexpr char kUnits[] = "units of the image";
    std::vector<EvidenceColumn> columns = {
        {"dvars_before", std::string(kDvars) + "before.", kUnits, cells(run.cleaning.dvarsBefore)},
        {"dvars_after", std::string(kDvars) + "after.", kUnits, cells(run.cleaning.dvarsAfter)}};
    if (run.fd) {
        columns.push_back({"framewise_displacement", "As in the table of confounds.", "mm", cells(*run.fd)});
    }
    writeEvidenceTable(files[ResultFile::kDenoiseVolumes], files[ResultFile::kDenoiseVolumesDescription], columns);
}

void writeComponents(const Denoising& run, const ResultFiles& files) {
    EvidenceColumn name{
        "component", "Component, or the confounds or the cosines of the high-pass filter together.", "", {}};
    EvidenceColumn fate{"classification", "Whether it was removed (rejected) or not (accepted).", "", {}};
    EvidenceColumn label{"label", "The label given: signal, noise or unsure.", "", {}};
    EvidenceColumn reason{"reason", "The note of the label; what the confounds are.", "", {}};
    EvidenceColumn percent{"variance_removed",
                           "Variance over time of what was subtracted for it, over the voxels of the mask.",
                           "per cent of the variance before",
                           {}};
    const auto orMissing = [](const std::string& text) { return text.empty() ? "n/a" : cellText(text); };
    for (const RemovedPart& part : removedParts(run)) {
        name.cells.push_back(part.name);
        fate.cells.emplace_back(part.removed ? "rejected" : "accepted");
        label.cells.push_back(orMissing(part.label));
        reason.cells.push_back(orMissing(part.reason));
        percent.cells.push_back(cellOf(part.removedPercent));
    }
    writeEvidenceTable(files[ResultFile::kDenoiseComponents], files[ResultFile::kDenoiseComponentsDescription],
                       {name, fate, label, reason, percent});
}

// Columns "x_y_z", the voxel's position counted from 0; rows are volumes. Three decimals.
void writeCarpet(const std::filesystem::path& file, const Denoising& run, const std::vector<float>& values) {
    const auto& size = run.functional.size;
    const auto volumes = static_cast<std::size_t>(run.volumes());
    std::string text;
    for (const std::int64_t voxel : run.carpet.voxels) {
        text += (text.empty() ? "" : "\t") + std::to_string(voxel % size[0]) + "_" +
                std::to_string(voxel / size[0] % size[1]) + "_" + std::to_string(voxel / size[0] / size[1]);
    }
    for (std::size_t t = 0; t < volumes; ++t) {
        const char* separator = "\n";
        for (std::size_t row = 0; row < run.carpet.voxels.size(); ++row) {
            text += separator + cellText(std::round(values[row * volumes + t] * 1000.0f) / 1000.0f);
            separator = "\t";
        }
    }
    writeTextFile(file, text + "\n");
}

void writeCarpets(const Denoising& run, const ResultFiles& files) {
    struct Image {
        ResultFile table;
        ResultFile description;
        const std::vector<float>& values;
        const char* which;
    };
    for (const Image& image :
         {Image{ResultFile::kCarpetBefore, ResultFile::kCarpetBeforeDescription, run.carpet.before, "as it was"},
          Image{ResultFile::kCarpetAfter, ResultFile::kCarpetAfterDescription, run.carpet.after, "denoised"}}) {
        writeCarpet(files[image.table], run, image.values);
        const nlohmann::ordered_json json = {
            {"Description", std::string("Carpet plot of the image ") + image.which +
                                ": one row per analysed volume, one column per voxel, named x_y_z after its position "
                                "counted from 0, in the order of its correlation with the global signal."},
            {"Units", "standard deviations of the voxel before denoising, from its mean"}};
        writeTextFile(files[image.description], json.dump(2) + "\n");
    }
}

} // namespace

void writeEvidence(const Denoising& run, const Quality& quality) {
    const ResultFiles& files = *run.files;
    writeQuality(files, quality);
    writeVolumes(run, files);
    writeComponents(run, files);
    writeCarpets(run, files);
    writeMaps(run);
}

} // namespace zn::headless
