#pragma once

#include "host/nrvmp_records.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace zn::headless {

/// A text that the plug-in writes into through a pointer. A map's name may have 269 characters: a label of 255, and
/// "Subject ", ": IC" and the number around it.
using TextBuffer = std::array<char, 512>;

/// One volume map with its associated data. The plug-in fills all of it in place.
struct VolumeMap {
    TextBuffer name{};
    std::int32_t type = 0;
    std::vector<float> values;     ///< one per voxel of the grid, x fastest
    std::vector<float> timeCourse; ///< one per volume
    std::vector<float> parameters; ///< sixteen in an ICA run
};

/// The set of volume maps (NR-VMPs) of the current anatomical volume. Owns every buffer that the records point to;
/// their addresses stay valid until the next create or clear.
class VolumeMaps {
public:
    void clear() { *this = VolumeMaps(); }

    /// Creates `count` maps of zeros on the grid given by the header's bounding box and resolution. Throws
    /// std::bad_alloc, and std::invalid_argument for a negative count or an empty bounding box.
    void create(int count, int timePoints, int parameters, const NRVMPsHeader& header);

    /// Fills the named fields of the record for the entire set.
    void describe(NRVMPsHeader& header);
    /// Fills the record of map `index`, from 0. Returns its voxel values, or null past the last map.
    float* describe(int index, NRVMPMap& record);
    /// Copies the fields of the record that are not in a shared buffer.
    void setParameters(int index, const NRVMPMap& record);
    void setDisplayRange(const NRVMPsHeader& header);

    const std::vector<VolumeMap>& maps() const { return maps_; }

private:
    bool has(int index) const { return index >= 0 && static_cast<std::size_t>(index) < maps_.size(); }

    std::vector<VolumeMap> maps_;
    std::array<TextBuffer, 3> names_{};
    std::vector<TextBuffer> parameterNames_;
    std::vector<char*> parameterNamePointers_;
    std::array<std::int32_t, 6> boundingBox_{};
    std::int32_t resolution_ = 0;
    std::array<std::int32_t, 4> displayRange_{};
};

} // namespace zn::headless
