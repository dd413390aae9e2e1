#include "input/voxel_data.h"

#include "host/host_api.h"

#include <algorithm>

namespace zn {

namespace {

void copyTimeCourse(const Vtc& vtc, long long gridIndex, float* row) {
    const long long first = gridIndex * vtc.volumes();
    if (vtc.floatData) {
        std::copy_n(vtc.floatData + first, vtc.volumes(), row);
    } else {
        std::copy_n(vtc.integerData + first, vtc.volumes(), row);
    }
}

// A bounding box that runs backwards along two axes has a positive number of voxels, none of which a scan meets.
void clearRows(VoxelData& data, const Vtc& vtc) {
    for (int row = 0; row < vtc.voxels; ++row) {
        std::fill_n(data.timeCourses[row], vtc.volumes(), 0.0f);
        for (int axis = 0; axis < 3; ++axis) data.coordinates[row][axis] = data.list[row + 2][axis + 1] = 0;
    }
}

} // namespace

VoxelData extractVoxels(const Vtc& vtc, VoiTemplates& templates) {
    VoxelData data{OffsetMatrix<float>(0, vtc.voxels - 1, 0, vtc.volumes() - 1),
                   OffsetMatrix<int>(0, vtc.voxels - 1, 0, 2), OffsetMatrix<int>(1, vtc.voxels + 1, 1, 3)};
    data.list[1][1] = vtc.voxels;

    if (!vtc.grid.canBeScanned()) clearRows(data, vtc);
    int row = 0;
    long long gridIndex = 0;
    for (int z = 0; z < vtc.grid.z; ++z) {
        for (int y = 0; y < vtc.grid.y; ++y) {
            for (int x = 0; x < vtc.grid.x; ++x, ++gridIndex) {
                if (!vtc.isSelected(gridIndex)) continue;
                const int position[3] = {x, y, z};
                for (int axis = 0; axis < 3; ++axis) {
                    data.coordinates[row][axis] = position[axis];
                    data.list[row + 2][axis + 1] = position[axis] + 1;
                }
                copyTimeCourse(vtc, gridIndex, data.timeCourses[row]);
                templates.take(gridIndex, row);
                ++row;
            }
        }
    }
    return data;
}

ZeroedBlock removeSpatialMean(OffsetMatrix<float>& timeCourses, int voxels, int volumes) {
    host().znLogText("// Plugin>  Removing the spatial mean from data matrix...");
    OffsetVector<double> mean(0, volumes - 1);
    ZeroedBlock centred(voxels, volumes);
    for (int v = 0; v < voxels; ++v) std::copy_n(timeCourses[v], volumes, centred.row(v));
    timeCourses.release();

    // Voxel by voxel through contiguous memory; each volume's sum still adds the voxels in order.
    mean.fill(0.0);
    for (int v = 0; v < voxels; ++v) {
        const double* x = centred.row(v);
        for (int t = 0; t < volumes; ++t) mean[t] += x[t];
    }
    for (int t = 0; t < volumes; ++t) mean[t] /= voxels;
    for (int v = 0; v < voxels; ++v) {
        double* x = centred.row(v);
        for (int t = 0; t < volumes; ++t) x[t] -= mean[t];
    }
    return centred;
}

} // namespace zn
