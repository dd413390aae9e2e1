#include "unit/fingerprint/literal_labelling.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace zn::test {

namespace {

using List = std::vector<int>;
using Coordinates = std::array<std::vector<float>, 3>; // by axis, then by point

// All points whose coordinate equals the seed's - 1, then those that equal it, then those that equal it + 1.
List slab(const std::vector<float>& coordinate, float centre) {
    List list;
    for (const float wanted : {centre - 1.0f, centre, centre + 1.0f}) {
        for (std::size_t i = 0; i < coordinate.size(); ++i) {
            if (coordinate[i] == wanted) list.push_back(static_cast<int>(i));
        }
    }
    return list;
}

List neighbourhood(const Coordinates& coordinates, std::size_t seed) {
    std::array<List, 3> slabs;
    for (std::size_t axis = 0; axis < 3; ++axis) slabs[axis] = slab(coordinates[axis], coordinates[axis][seed]);
    std::size_t shortest = 0;
    for (std::size_t axis = 1; axis < 3; ++axis) {
        if (slabs[axis].size() < slabs[shortest].size()) shortest = axis;
    }
    const List& second = slabs[(shortest + 1) % 3];
    const List& third = slabs[(shortest + 2) % 3];
    List list;
    for (const int q : slabs[shortest]) {
        if (std::count(second.begin(), second.end(), q) == 1 && std::count(third.begin(), third.end(), q) == 1) {
            list.push_back(q);
        }
    }
    return list;
}

} // namespace

LiteralLabelling literalLabelling(const std::vector<Voxel>& voxels, float zThreshold, int minClusterSize) {
    LiteralLabelling result{std::vector<int>(voxels.size(), 0), 0};
    std::vector<std::size_t> points;
    Coordinates coordinates;
    for (std::size_t v = 0; v < voxels.size(); ++v) {
        if (!(voxels[v].value > zThreshold)) continue;
        points.push_back(v);
        coordinates[0].push_back(static_cast<float>(voxels[v].x));
        coordinates[1].push_back(static_cast<float>(voxels[v].y));
        coordinates[2].push_back(static_cast<float>(voxels[v].z));
    }
    const std::size_t n = points.size();
    if (n == 0) return result;

    std::vector<int> label(n, 0);
    int c = 0;
    for (std::size_t s = 0; s < n; ++s) {
        if (label[s] != 0) continue;
        ++c;
        label[s] = c;
        for (const int neighbour : neighbourhood(coordinates, s)) {
            const auto q = static_cast<std::size_t>(neighbour);
            if (label[q] == 0) {
                label[q] = c;
                continue;
            }
            const auto merged = static_cast<float>(label[q]);
            for (int& other : label) {
                if (static_cast<float>(other) == merged) other = c;
            }
        }
    }

    std::vector<int> recorded(n, 0);
    const int m = *std::max_element(label.begin(), label.end());
    for (int wanted = 1; wanted <= m; ++wanted) {
        const auto size = static_cast<int>(std::count(label.begin(), label.end(), wanted));
        if (size <= 0 || size < minClusterSize) continue;
        ++result.survivors;
        for (std::size_t k = 0; k < n; ++k) {
            if (label[k] == wanted) recorded[k] = size;
        }
    }
    for (std::size_t k = 0; k < n; ++k) result.flags[points[k]] = recorded[k];
    return result;
}

} // namespace zn::test
