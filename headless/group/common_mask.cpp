#include "headless/group/common_mask.h"

#include <algorithm>
#include <cstddef>

namespace zn::headless {

CommonMask commonMask(const std::vector<std::vector<bool>>& masks) {
    CommonMask result;
    const std::size_t runs = masks.size();
    result.voxels.resize(masks.front().size());
    result.lacking.resize(runs);
    std::vector<std::int64_t> sizes(runs);
    for (std::size_t v = 0; v < result.voxels.size(); ++v) {
        std::size_t have = 0;
        for (std::size_t run = 0; run < runs; ++run) {
            if (!masks[run][v]) continue;
            ++have;
            ++sizes[run];
        }
        result.voxels[v] = have == runs ? 1 : 0;
        result.count += result.voxels[v];
        if (have == runs || 2 * have < runs) continue;
        for (std::size_t run = 0; run < runs; ++run) result.lacking[run] += masks[run][v] ? 0 : 1;
    }
    const auto middle = sizes.begin() + static_cast<std::ptrdiff_t>(runs / 2);
    std::nth_element(sizes.begin(), middle, sizes.end());
    result.median = *middle;
    return result;
}

} // namespace zn::headless
