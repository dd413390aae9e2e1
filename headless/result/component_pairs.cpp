#include "headless/result/component_pairs.h"

#include "headless/failure/failure.h"
#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/result/matching.h"
#include "headless/result/result_files.h"
#include "headless/result/result_names.h"
#include "headless/result/spatial_correlation.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zn::headless {

namespace {

// Voxels that are nonzero in some map of a result; the others were not analysed.
std::vector<bool> analysed(const std::vector<float>& maps, std::size_t voxels) {
    std::vector<bool> result(voxels);
    for (std::size_t i = 0; i < maps.size(); ++i) {
        if (maps[i] != 0.0f) result[i % voxels] = true;
    }
    return result;
}

// Four digits, so that the lines are sorted by the numbers as printed.
double asPrinted(double r) {
    return std::round(r * 1e4) / 1e4;
}

std::vector<ComponentPair> pairsOf(const std::vector<double>& r, int rows, int columns) {
    std::vector<double> size(r.size());
    std::transform(r.begin(), r.end(), size.begin(), [](double value) { return std::fabs(value); });
    const std::vector<int> partner = bestMatching(size, rows, columns);
    std::vector<ComponentPair> pairs;
    std::vector<bool> taken(static_cast<std::size_t>(columns));
    for (int a = 0; a < rows; ++a) {
        const int b = partner[static_cast<std::size_t>(a)];
        pairs.push_back({a, b,
                         b < 0 ? 0.0
                               : asPrinted(r[static_cast<std::size_t>(a) * static_cast<std::size_t>(columns) +
                                             static_cast<std::size_t>(b)])});
        if (b >= 0) taken[static_cast<std::size_t>(b)] = true;
    }
    for (int b = 0; b < columns; ++b) {
        if (!taken[static_cast<std::size_t>(b)]) pairs.push_back({-1, b, 0.0});
    }
    std::stable_sort(pairs.begin(), pairs.end(),
                     [](const ComponentPair& x, const ComponentPair& y) { return std::fabs(x.r) > std::fabs(y.r); });
    return pairs;
}

} // namespace

std::vector<ComponentPair> pairComponents(const std::filesystem::path& a, const std::filesystem::path& b) {
    const ImageHeader headerA = readImageHeader(ResultFiles::in(a)[ResultFile::kComponents]);
    const ImageHeader headerB = readImageHeader(ResultFiles::in(b)[ResultFile::kComponents]);
    requireSameGrid("second result", headerB, headerA);
    const auto voxels = static_cast<std::size_t>(headerA.voxels());
    const std::vector<float> mapsA = readAllVolumes(headerA);
    const std::vector<float> mapsB = readAllVolumes(headerB);
    const std::vector<bool> inA = analysed(mapsA, voxels);
    const std::vector<bool> inB = analysed(mapsB, voxels);
    std::vector<std::size_t> shared;
    for (std::size_t v = 0; v < voxels; ++v) {
        if (inA[v] && inB[v]) shared.push_back(v);
    }
    if (shared.size() < 2) {
        throw Failure(ExitStatus::kInput, "the two results have no voxels in common; check their masks.");
    }
    MatrixProducts products(MatrixProducts::defaultThreads());
    const auto r = correlations(products, standardisedMaps(mapsA, voxels, shared),
                                standardisedMaps(mapsB, voxels, shared), shared.size());
    return pairsOf(r, headerA.volumes, headerB.volumes);
}

std::string pairTable(const std::vector<ComponentPair>& pairs) {
    const auto name = [](int component) { return component < 0 ? "n/a" : componentName(component); };
    std::string text = "a\tb\tr\n";
    for (const ComponentPair& pair : pairs) {
        char r[32] = "n/a";
        if (pair.a >= 0 && pair.b >= 0) std::snprintf(r, sizeof r, "%.4f", pair.r);
        text += name(pair.a) + "\t" + name(pair.b) + "\t" + r + "\n";
    }
    return text;
}

std::string pairSummary(const std::vector<ComponentPair>& pairs) {
    constexpr double kSimilar = 0.8;
    std::vector<double> sizes; // of the pairs, which are in descending order
    for (const ComponentPair& pair : pairs) {
        if (pair.a >= 0 && pair.b >= 0) sizes.push_back(std::fabs(pair.r));
    }
    const std::size_t count = sizes.size();
    const auto similar = std::count_if(sizes.begin(), sizes.end(), [](double r) { return r > kSimilar; });
    char text[128];
    std::snprintf(text, sizeof text, "median |r| %.4f; %td of %zu pairs above %.1f",
                  (sizes[(count - 1) / 2] + sizes[count / 2]) / 2.0, similar, count, kSimilar);
    const std::size_t alone = pairs.size() - count;
    if (alone == 0) return text;
    return text + ("; " + std::to_string(alone)) + (alone == 1 ? " component" : " components") + " without a partner";
}

} // namespace zn::headless
