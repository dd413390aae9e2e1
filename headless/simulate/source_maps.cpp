#include "headless/simulate/source_maps.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace zn::headless {

namespace {

constexpr float kRegionWeight = 0.25f; // the region at or above this weight correlates best with the map (r = 0.91)
constexpr int kPatience = 2000;        // attempts to place a blob before more overlap is allowed
constexpr double kInner = 0.85;        // blob centres stay within this fraction of the ellipsoid's axes

using Point = std::array<double, 3>;

double distance(const Point& a, const Point& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

Point randomPointInside(const Brain& brain, RandomNumbers& random) {
    while (true) {
        const Point unit = {random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0), random.uniform(-1.0, 1.0)};
        if (distance(unit, {}) > 1.0) continue;
        const Point centre = brain.centre();
        return {centre[0] + kInner * brain.halfAxes[0] * unit[0], centre[1] + kInner * brain.halfAxes[1] * unit[1],
                centre[2] + kInner * brain.halfAxes[2] * unit[2]};
    }
}

bool isFree(const SourceMap& candidate, const std::vector<SourceMap>& placed, double gap) {
    const auto& c = candidate.centres;
    if (c.size() == 2 && distance(c[0], c[1]) < 2.0 * candidate.radius + gap) return false;
    for (const SourceMap& other : placed) {
        for (const Point& theirs : other.centres) {
            for (const Point& ours : c) {
                if (distance(ours, theirs) < candidate.radius + other.radius + gap) return false;
            }
        }
    }
    return true;
}

SourceMap placeOne(const Brain& brain, bool mirrored, const std::vector<SourceMap>& placed, RandomNumbers& random) {
    const double shortest = *std::min_element(brain.halfAxes.begin(), brain.halfAxes.end());
    SourceMap source;
    // A single blob has the volume of a pair.
    source.radius = shortest * random.uniform(0.50, 0.54) * (mirrored ? 1.0 : std::cbrt(2.0));
    for (int attempt = 0;; ++attempt) {
        const int patienceLost = attempt / kPatience;
        const double gap = -source.radius * (0.35 + patienceLost); // allow more overlap in a crowded brain
        const Point centre = randomPointInside(brain, random);
        source.centres = {centre};
        if (mirrored) source.centres.push_back({2.0 * brain.centre()[0] - centre[0], centre[1], centre[2]});
        if (isFree(source, placed, gap)) return source;
    }
}

void fillEntries(SourceMap& source, const Brain& brain) {
    std::int64_t voxel = 0;
    for (int z = 0; z < brain.size[2]; ++z) {
        for (int y = 0; y < brain.size[1]; ++y) {
            for (int x = 0; x < brain.size[0]; ++x, ++voxel) {
                if (brain.mask[static_cast<std::size_t>(voxel)] == 0) continue;
                double nearest = INFINITY;
                for (const Point& centre : source.centres) {
                    nearest = std::min(nearest, distance(centre, {double(x), double(y), double(z)}));
                }
                const double share = nearest / source.radius;
                if (share >= 1.0) continue;
                const double weight = (1.0 - share * share) * (1.0 - share * share);
                source.entries.push_back({voxel, static_cast<float>(weight)});
            }
        }
    }
}

} // namespace

std::vector<SourceMap::Entry> SourceMap::region() const {
    std::vector<Entry> strong;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(strong),
                 [](const Entry& entry) { return entry.weight > kRegionWeight; });
    return strong;
}

std::vector<SourceMap> placeSources(const Brain& brain, int count, RandomNumbers& random) {
    std::vector<SourceMap> sources;
    for (int i = 0; i < count; ++i) {
        sources.push_back(placeOne(brain, i % 3 == 0, sources, random));
        fillEntries(sources.back(), brain);
    }
    return sources;
}

} // namespace zn::headless
