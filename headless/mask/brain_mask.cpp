#include "headless/mask/brain_mask.h"

#include "headless/mask/intensity_threshold.h"

#include <algorithm>
#include <cstdint>

namespace zn::headless {

namespace {

using Size = std::array<int, 3>;

std::array<std::int64_t, 3> positionOf(std::int64_t voxel, const Size& size) {
    return {voxel % size[0], voxel / size[0] % size[1], voxel / size[0] / size[1]};
}

// Labels the face-connected component of equal values that contains `start`; returns its size. `queue` is scratch.
std::int64_t flood(std::vector<unsigned char>& mask, const Size& size, std::int64_t start, unsigned char label,
                   std::vector<std::int64_t>& queue) {
    const std::array<std::int64_t, 3> steps = {1, size[0], std::int64_t{1} * size[0] * size[1]};
    const unsigned char value = mask[static_cast<std::size_t>(start)];
    mask[static_cast<std::size_t>(start)] = label;
    queue.assign(1, start);
    std::int64_t count = 0;
    const auto visit = [&](std::int64_t voxel) {
        if (mask[static_cast<std::size_t>(voxel)] != value) return;
        mask[static_cast<std::size_t>(voxel)] = label;
        queue.push_back(voxel);
    };
    while (!queue.empty()) {
        const std::int64_t voxel = queue.back();
        queue.pop_back();
        ++count;
        const auto position = positionOf(voxel, size);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (position[axis] > 0) visit(voxel - steps[axis]);
            if (position[axis] + 1 < size[axis]) visit(voxel + steps[axis]);
        }
    }
    return count;
}

bool onBorder(std::int64_t voxel, const Size& size) {
    const auto position = positionOf(voxel, size);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (position[axis] == 0 || position[axis] + 1 == size[axis]) return true;
    }
    return false;
}

constexpr unsigned char kVisited = 2;
constexpr unsigned char kChosen = 3;

} // namespace

void keepLargestComponent(std::vector<unsigned char>& mask, const Size& size) {
    std::vector<std::int64_t> queue;
    std::int64_t largest = 0;
    std::int64_t start = -1;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        if (mask[v] != 1) continue;
        const std::int64_t count = flood(mask, size, static_cast<std::int64_t>(v), kVisited, queue);
        if (count <= largest) continue;
        largest = count;
        start = static_cast<std::int64_t>(v);
    }
    if (start >= 0) flood(mask, size, start, kChosen, queue);
    for (unsigned char& value : mask) value = value == kChosen ? 1 : 0;
}

void fillHoles(std::vector<unsigned char>& mask, const Size& size) {
    std::vector<std::int64_t> queue;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        const auto voxel = static_cast<std::int64_t>(v);
        if (mask[v] == 0 && onBorder(voxel, size)) flood(mask, size, voxel, kVisited, queue);
    }
    for (unsigned char& value : mask) value = value == kVisited ? 0 : 1;
}

std::vector<unsigned char> brainMask(const std::vector<float>& image, const Size& size) {
    const auto threshold = intensityThreshold(image);
    std::vector<unsigned char> mask(image.size(), 1);
    if (!threshold) return mask;
    std::transform(image.begin(), image.end(), mask.begin(),
                   [&](float value) { return static_cast<unsigned char>(value >= *threshold); });
    keepLargestComponent(mask, size);
    fillHoles(mask, size);
    return mask;
}

} // namespace zn::headless
