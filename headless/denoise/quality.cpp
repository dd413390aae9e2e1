#include "headless/denoise/quality.h"

#include "headless/statistics/correlation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace zn::headless {

namespace {

double meanOf(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

double medianOf(std::vector<double> values) {
    const std::size_t half = values.size() / 2;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(half);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 == 1) return *middle;
    return (*std::max_element(values.begin(), middle) + *middle) / 2.0;
}

std::vector<double> afterTheFirst(const std::vector<double>& values) {
    return {values.begin() + 1, values.end()};
}

// Of the voxels of the mask whose standard deviation is not 0.
std::vector<double> tsnr(const Denoising& run, const std::vector<float>& sd) {
    std::vector<double> values;
    for (std::size_t v = 0; v < sd.size(); ++v) {
        if (run.kinds[v] != VoxelKind::kInMask || sd[v] == 0.0f) continue;
        values.push_back(static_cast<double>(run.cleaning.mean[v]) / static_cast<double>(sd[v]));
    }
    if (values.empty()) values.push_back(std::numeric_limits<double>::quiet_NaN());
    return values;
}

// Over the volumes where both have a value.
double correlationWithMotion(const std::vector<double>& dvars, const std::vector<float>& fd) {
    return correlation(dvars, fd, [&](std::size_t t) { return !std::isnan(dvars[t]) && !std::isnan(fd[t]); });
}

double meanOfPresent(const std::vector<float>& values) {
    std::vector<double> present;
    for (const float value : values) {
        if (!std::isnan(value)) present.push_back(static_cast<double>(value));
    }
    return meanOf(present);
}

} // namespace

Quality qualityOf(const Denoising& run) {
    const Cleaning& cleaning = run.cleaning;
    const auto before = afterTheFirst(cleaning.dvarsBefore);
    const auto after = afterTheFirst(cleaning.dvarsAfter);
    const auto tsnrBefore = tsnr(run, cleaning.sdBefore);
    const auto tsnrAfter = tsnr(run, cleaning.sdAfter);
    Quality quality;
    quality.dvarsMean = {meanOf(before), meanOf(after)};
    quality.dvarsMedian = {medianOf(before), medianOf(after)};
    quality.tsnrMean = {meanOf(tsnrBefore), meanOf(tsnrAfter)};
    quality.tsnrMedian = {medianOf(tsnrBefore), medianOf(tsnrAfter)};
    quality.variance = {100.0, 100.0 * cleaning.squaresAfter / cleaning.squaresBefore};
    const auto components = static_cast<double>(run.verdicts.size());
    quality.components = {components, components - run.rejectedCount()};
    const double degrees = run.volumes() - 1;
    quality.degreesOfFreedom = {degrees, degrees - run.removal.lostDegrees};
    if (run.fd) {
        quality.fdMean = meanOfPresent(*run.fd);
        quality.dvarsFd = {correlationWithMotion(cleaning.dvarsBefore, *run.fd),
                           correlationWithMotion(cleaning.dvarsAfter, *run.fd)};
    }
    if (!run.options.labels.empty()) {
        quality.unlabelled = static_cast<int>(
            std::ranges::count_if(run.verdicts, [](const Verdict& verdict) { return verdict.label.empty(); }));
    }
    return quality;
}

std::vector<QualityRow> qualityRows(const Quality& quality) {
    std::vector<QualityRow> rows = {{"dvars_mean", "DVARS, mean", "units of the image", quality.dvarsMean},
                                    {"dvars_median", "DVARS, median", "units of the image", quality.dvarsMedian},
                                    {"tsnr_mean", "Temporal SNR, mean", "", quality.tsnrMean},
                                    {"tsnr_median", "Temporal SNR, median", "", quality.tsnrMedian},
                                    {"variance", "Variance over time", "per cent of that before", quality.variance},
                                    {"components", "Components", "", quality.components},
                                    {"degrees_of_freedom", "Degrees of freedom", "", quality.degreesOfFreedom}};
    if (quality.fdMean) {
        rows.push_back(
            {"framewise_displacement_mean", "Framewise displacement, mean", "mm", {*quality.fdMean, *quality.fdMean}});
    }
    if (quality.dvarsFd) {
        rows.push_back(
            {"dvars_fd_correlation", "Correlation of DVARS with framewise displacement", "", *quality.dvarsFd});
    }
    return rows;
}

} // namespace zn::headless
