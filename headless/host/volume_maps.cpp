#include "headless/host/volume_maps.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace zn::headless {

namespace {

std::int64_t gridVoxels(const NRVMPsHeader& header) {
    if (header.resolution < 1) throw std::invalid_argument("volume maps of resolution 0");
    std::int64_t voxels = 1;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::int64_t extent = std::int64_t{header.boundingBox[2 * axis + 1]} - header.boundingBox[2 * axis];
        if (extent < header.resolution) throw std::invalid_argument("volume maps without volume");
        voxels *= extent / header.resolution;
    }
    return voxels;
}

} // namespace

void VolumeMaps::create(int count, int timePoints, int parameters, const NRVMPsHeader& header) {
    if (count < 0 || timePoints < 0 || parameters < 0) throw std::invalid_argument("a negative number of maps");
    const auto voxels = static_cast<std::size_t>(gridVoxels(header));
    clear();
    VolumeMap map;
    map.values.resize(voxels);
    map.timeCourse.resize(static_cast<std::size_t>(timePoints));
    map.parameters.resize(static_cast<std::size_t>(parameters));
    maps_.assign(static_cast<std::size_t>(count), map);

    parameterNames_.resize(static_cast<std::size_t>(parameters));
    for (auto& name : parameterNames_) parameterNamePointers_.push_back(name.data());
    std::copy(std::begin(header.boundingBox), std::end(header.boundingBox), boundingBox_.begin());
    resolution_ = header.resolution;
}

void VolumeMaps::describe(NRVMPsHeader& header) {
    header.firstName = names_[0].data();
    header.secondName = names_[1].data();
    header.thirdName = names_[2].data();
    std::copy(boundingBox_.begin(), boundingBox_.end(), header.boundingBox);
    header.resolution = resolution_;
    std::copy(displayRange_.begin(), displayRange_.end(), header.parameterDisplayRange);
    header.parameterNames = parameterNamePointers_.data();
}

float* VolumeMaps::describe(int index, NRVMPMap& record) {
    if (!has(index)) return nullptr;
    VolumeMap& map = maps_[static_cast<std::size_t>(index)];
    record.name = map.name.data();
    record.type = map.type;
    record.timeCourse = map.timeCourse.empty() ? nullptr : map.timeCourse.data();
    record.parameters = map.parameters.empty() ? nullptr : map.parameters.data();
    return map.values.data();
}

void VolumeMaps::setParameters(int index, const NRVMPMap& record) {
    if (has(index)) maps_[static_cast<std::size_t>(index)].type = record.type;
}

void VolumeMaps::setDisplayRange(const NRVMPsHeader& header) {
    std::copy(std::begin(header.parameterDisplayRange), std::end(header.parameterDisplayRange), displayRange_.begin());
}

} // namespace zn::headless
