#include "headless/study/thumbnail.h"

#include "headless/nifti/image_header.h"
#include "headless/nifti/read_volumes.h"
#include "headless/report/mean_image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>

namespace zn::headless {

namespace {

constexpr int kSide = 44; // pixels
constexpr char kOutline = 'q';

// The voxel axis that runs closest to each world axis (x to the right, y to the front, z up), and whether it runs
// against it.
struct Axes {
    std::array<std::size_t, 3> voxel{};
    std::array<bool, 3> reversed{};
};

Axes axesOf(const Affine& affine) {
    Axes axes;
    std::array<bool, 3> taken{};
    for (std::size_t world = 0; world < 3; ++world) {
        std::size_t best = 3;
        for (std::size_t voxel = 0; voxel < 3; ++voxel) {
            if (taken[voxel]) continue;
            if (best == 3 || std::fabs(affine[world][voxel]) > std::fabs(affine[world][best])) best = voxel;
        }
        taken[best] = true;
        axes.voxel[world] = best;
        axes.reversed[world] = affine[world][best] < 0;
    }
    return axes;
}

class Picture {
public:
    Picture(const ImageHeader& header, std::vector<unsigned char> grey, std::vector<unsigned char> mask)
        : header_(header), axes_(axesOf(header.affine)), grey_(std::move(grey)), mask_(std::move(mask)) {
        for (std::size_t world = 0; world < 3; ++world) {
            const std::size_t axis = axes_.voxel[world];
            double square = 0.0;
            for (std::size_t row = 0; row < 3; ++row) square += header.affine[row][axis] * header.affine[row][axis];
            edge_[world] = square > 0.0 ? std::sqrt(square) : 1.0;
            longest_ = std::max(longest_, edge_[world] * header.size[axis]);
        }
        centre_ = centre();
    }

    /// One square: `across` and `up` are world axes.
    void draw(std::size_t across, std::size_t up, std::size_t column, std::string& pixels) const {
        for (int row = 0; row < kSide; ++row) {
            for (int i = 0; i < kSide; ++i) {
                pixels[static_cast<std::size_t>(row) * 3 * kSide + column * kSide + static_cast<std::size_t>(i)] =
                    pixel(across, up, i, kSide - 1 - row);
            }
        }
    }

private:
    // Linear index of the voxel under a pixel; -1 outside the image.
    std::int64_t voxelAt(std::size_t across, std::size_t up, int i, int j) const {
        std::array<std::int64_t, 3> at = centre_;
        for (const auto& [world, pixel] : {std::pair(across, i), std::pair(up, j)}) {
            const std::size_t axis = axes_.voxel[world];
            const double millimetres = (pixel + 0.5 - kSide / 2.0) * longest_ / kSide;
            const double along = header_.size[axis] / 2.0 + millimetres / edge_[world];
            if (along < 0.0 || along >= header_.size[axis]) return -1;
            const auto step = static_cast<std::int64_t>(along);
            at[axis] = axes_.reversed[world] ? header_.size[axis] - 1 - step : step;
        }
        return at[0] + header_.size[0] * (at[1] + std::int64_t{header_.size[1]} * at[2]);
    }

    bool inside(std::size_t across, std::size_t up, int i, int j) const {
        const std::int64_t voxel = voxelAt(across, up, i, j);
        return voxel >= 0 && mask_[static_cast<std::size_t>(voxel)] != 0;
    }

    char pixel(std::size_t across, std::size_t up, int i, int j) const {
        const std::int64_t voxel = voxelAt(across, up, i, j);
        if (voxel < 0) return 'a';
        const bool edge = inside(across, up, i, j) && !(inside(across, up, i - 1, j) && inside(across, up, i + 1, j) &&
                                                        inside(across, up, i, j - 1) && inside(across, up, i, j + 1));
        return edge ? kOutline : static_cast<char>('a' + grey_[static_cast<std::size_t>(voxel)] / 16);
    }

    // The mean position of the mask's voxels.
    std::array<std::int64_t, 3> centre() const {
        std::array<std::int64_t, 3> sum{};
        std::int64_t count = 0;
        const std::int64_t nx = header_.size[0];
        const std::int64_t ny = header_.size[1];
        for (std::size_t v = 0; v < mask_.size(); ++v) {
            if (mask_[v] == 0) continue;
            const auto index = static_cast<std::int64_t>(v);
            sum[0] += index % nx;
            sum[1] += index / nx % ny;
            sum[2] += index / (nx * ny);
            ++count;
        }
        for (std::int64_t& along : sum) along /= std::max<std::int64_t>(count, 1);
        return sum;
    }

    const ImageHeader& header_;
    Axes axes_;
    std::vector<unsigned char> grey_;
    std::vector<unsigned char> mask_;
    std::array<double, 3> edge_{}; // of a voxel along each world axis, in millimetres
    double longest_ = 0.0;         // edge of the image, in millimetres
    std::array<std::int64_t, 3> centre_{};
};

} // namespace

nlohmann::ordered_json thumbnailOf(const ResultFiles& files) {
    if (!files.has(ResultFile::kMean) || !files.has(ResultFile::kMask)) return nullptr;
    try {
        const ImageHeader mean = readImageHeader(files[ResultFile::kMean]);
        const Picture picture(mean, greyLevels(readSingleVolume(mean)),
                              readMask(readImageHeader(files[ResultFile::kMask])));
        std::string pixels(std::size_t{3} * kSide * kSide, 'a');
        picture.draw(0, 1, 0, pixels);
        picture.draw(0, 2, 1, pixels);
        picture.draw(1, 2, 2, pixels);
        return {{"Width", 3 * kSide}, {"Height", kSide}, {"Pixels", pixels}};
    } catch (const std::exception&) { // a result does not depend on its picture
        return nullptr;
    }
}

} // namespace zn::headless
