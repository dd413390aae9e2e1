#include "headless/simulate/write_sample.h"

#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

void writeRegions(const ResultFiles& files, const Sample& sample, const nifti_image& grid) {
    std::vector<std::int16_t> labels(sample.brain.mask.size());
    std::vector<float> strongest(labels.size()); // where sources overlap, the label is that of the strongest
    std::string names = "index\tname\n";
    std::int16_t label = 0;
    for (const Source& source : sample.sources) {
        ++label;
        for (const auto& entry : source.map.region()) {
            const auto voxel = static_cast<std::size_t>(entry.voxel);
            if (entry.weight <= strongest[voxel]) continue;
            strongest[voxel] = entry.weight;
            labels[voxel] = label;
        }
        names += std::to_string(label) + "\t" + source.timeCourse.kind + "\n";
    }
    ImageWriter writer(files[ResultFile::kSourceRegions], grid, {1, NIFTI_TYPE_INT16, 0.0, "regions of the sources"});
    writer.write(labels);
    writer.close();
    writeTextFile(files[ResultFile::kSourceNames], names);
}

} // namespace

void writeMeasurement(const fs::path& file, const Sample& sample, const nifti_image& grid) {
    ImageWriter::Layout layout;
    layout.volumes = sample.brain.volumes;
    layout.dataType = NIFTI_TYPE_INT16;
    layout.secondsPerVolume = sample.secondsPerVolume;
    layout.description = "simulated functional data";
    ImageWriter writer(file, grid, layout);
    makeVolumes(sample, [&](std::span<const std::int16_t> volume) { writer.write(volume); });
    writer.close();
}

void writeMask(const fs::path& file, const Brain& brain, const nifti_image& grid) {
    ImageWriter writer(file, grid, {1, NIFTI_TYPE_UINT8, 0.0, "brain mask"});
    writer.write(brain.mask);
    writer.close();
}

void writeSourceMaps(const fs::path& file, const Sample& sample, const nifti_image& grid) {
    const auto count = static_cast<int>(sample.sources.size());
    ImageWriter writer(file, grid, {count, NIFTI_TYPE_FLOAT32, 0.0, "maps of the sources"});
    for (const Source& source : sample.sources) {
        std::vector<float> map(sample.brain.mask.size());
        for (const auto& entry : source.map.entries) {
            map[static_cast<std::size_t>(entry.voxel)] = static_cast<float>(source.amplitude) * entry.weight;
        }
        writer.write(map);
    }
    writer.close();
}

void writeTimeCourses(const fs::path& file, const Sample& sample, bool tasksOnly) {
    std::vector<const SourceTimeCourse*> columns;
    for (const Source& source : sample.sources) {
        if (!tasksOnly || source.timeCourse.isTask) columns.push_back(&source.timeCourse);
    }
    if (columns.empty()) return;
    std::string text;
    for (const auto* column : columns) text += (column == columns.front() ? "" : "\t") + column->kind;
    text += '\n';
    for (std::size_t t = 0; t < static_cast<std::size_t>(sample.brain.volumes); ++t) {
        for (const auto* column : columns) {
            text += (column == columns.front() ? "" : "\t") + cellText(static_cast<float>(column->values[t]));
        }
        text += '\n';
    }
    writeTextFile(file, text);
}

Json truthOf(const SimulateOptions& options, const Sample& sample) {
    Json sources = Json::array();
    for (const Source& source : sample.sources) {
        sources.push_back({{"name", source.timeCourse.kind},
                           {"follows_stimulus", source.timeCourse.isTask},
                           {"amplitude", source.amplitude},
                           {"centres_voxels", source.map.centres},
                           {"radius_voxels", source.map.radius},
                           {"region_voxels", source.map.region().size()}});
    }
    return {{"size", options.size},
            {"seed", options.seed},
            {"noise_percent", options.noisePercent},
            {"voxels_inside", sample.brain.voxelsInside()},
            {"volumes", sample.brain.volumes},
            {"repetition_time_seconds", sample.secondsPerVolume},
            {"sources", sources}};
}

void writeSample(const ResultFiles& files, const Sample& sample, const SimulateOptions& options) {
    const auto grid = newGrid(sample.brain.size, sample.brain.edge);
    writeMeasurement(files[ResultFile::kSampleImage], sample, *grid);
    const Json sidecar = {{"RepetitionTime", sample.secondsPerVolume}, {"TaskName", "blocks"}};
    writeTextFile(files[ResultFile::kSampleSidecar], sidecar.dump(2) + "\n");
    writeMask(files[ResultFile::kMask], sample.brain, *grid);
    writeSourceMaps(files[ResultFile::kTrueMaps], sample, *grid);
    writeTimeCourses(files[ResultFile::kTrueMixing], sample, false);
    writeTimeCourses(files[ResultFile::kTaskDesign], sample, true);
    writeRegions(files, sample, *grid);
    writeTextFile(files[ResultFile::kTruth], truthOf(options, sample).dump(2) + "\n");
}

} // namespace zn::headless
