#pragma once

#include <cstdint>
#include <vector>

namespace zn::headless {

/// A view of single-precision time courses, voxel after voxel, of which the first volumes (dummy scans) are not
/// touched.
struct AnalysedCourses {
    float* values; ///< element v * volumesInImage + t
    std::int64_t voxels;
    int volumesInImage;
    int omitted;

    int volumes() const { return volumesInImage - omitted; }
    /// The analysed part of a course.
    float* course(std::int64_t voxel) const { return values + voxel * volumesInImage + omitted; }
};

/// What can be done with a voxel.
enum class VoxelKind : unsigned char {
    kInMask,    ///< cleaned, and counted in the evidence
    kOutside,   ///< cleaned
    kConstant,  ///< never changes: left as it is
    kNotFinite, ///< has a non-finite value in an analysed volume: left as it is
};

} // namespace zn::headless
