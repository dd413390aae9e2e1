#include "headless/group/steps/group_maps.h"

#include "headless/compression/checksum.h"
#include "headless/failure/failure.h"
#include "headless/group/steps/batch_files.h"
#include "headless/group/steps/step_files.h"
#include "headless/nifti/image_writer.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"

#include <cmath>
#include <span>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

void standardise(std::span<float> map) {
    double mean = 0.0;
    for (const float value : map) mean += static_cast<double>(value);
    mean /= static_cast<double>(map.size());
    double squares = 0.0;
    for (const float value : map) squares += std::pow(static_cast<double>(value) - mean, 2);
    const double scale = 1.0 / std::sqrt(squares / static_cast<double>(map.size()));
    for (float& value : map) value = static_cast<float>((static_cast<double>(value) - mean) * scale);
}

} // namespace

fs::path groupMapsFile(const fs::path& study) {
    return study / "desc-groupICA_components.nii.gz";
}

fs::path groupRecordFile(const fs::path& study) {
    return study / "desc-groupICA_decomposition.json";
}

GroupMaps readMaps(const fs::path& file, const GroupStudy& study) {
    const ImageHeader header = readImageHeader(file);
    requireSameGrid("the maps", header, study.grid);
    const std::vector<float> all = readAllVolumes(header);
    GroupMaps maps;
    maps.count = header.volumes;
    for (int map = 0; map < maps.count; ++map) {
        const float* from = all.data() + map * header.voxels();
        for (const std::int64_t v : study.inside) maps.values.push_back(from[v]);
        standardise(std::span(maps.values).last(study.inside.size()));
    }
    Checksum checksum;
    checksum.add(std::as_bytes(std::span(maps.values)));
    maps.checksum = checksum.text();
    return maps;
}

GroupMaps readGroupMaps(const GroupStudy& study) {
    const auto record = anyRecord(groupRecordFile(study.folder));
    if (!record) {
        throw Failure(ExitStatus::kInput, study.folder.string() + " holds no group components yet; run znica group "
                                                                  "ica first.");
    }
    if (record->value("Study", "") != study.id) {
        throw Failure(ExitStatus::kInput, groupMapsFile(study.folder).string() +
                                              " belongs to another plan of this study; repeat znica group reduce, "
                                              "merge and ica.");
    }
    return readMaps(groupMapsFile(study.folder), study);
}

void writeMaps(const fs::path& file, const GroupStudy& study, const std::vector<float>& values,
               const char* description) {
    const auto count = static_cast<int>(values.size() / study.inside.size());
    ImageWriter writer(file, *study.grid.image, {count, NIFTI_TYPE_FLOAT32, 0.0, description});
    std::vector<float> volume(study.mask.size());
    auto from = values.begin();
    for (int map = 0; map < count; ++map) {
        for (const std::int64_t v : study.inside) volume[static_cast<std::size_t>(v)] = *from++;
        writer.write(volume);
    }
    writer.close();
}

} // namespace zn::headless
