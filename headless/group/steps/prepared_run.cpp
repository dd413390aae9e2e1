#include "headless/group/steps/prepared_run.h"

#include "headless/failure/failure.h"
#include "headless/group/steps/run_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/nifti/transpose_volumes.h"
#include "headless/prepare/high_pass.h"
#include "headless/prepare/masked_pieces.h"
#include "headless/prepare/scale_voxels.h"
#include "headless/prepare/smooth_series.h"
#include "headless/run/smoothing_width.h"

#include <algorithm>
#include <numeric>

namespace zn::headless {

namespace {

constexpr int kTogether = 16; // volumes, which fill a cache line of every voxel

// Collects volumes of the grid and hands them on as time courses in the mask, smoothed if the study says so.
class VolumeBuffer {
public:
    VolumeBuffer(const GroupStudy& study, PreparedRun& run, WorkerThreads& threads)
        : study_(study), run_(run), threads_(threads), voxels_(study.grid.voxels()) {
        const std::int64_t kept = smooths() ? voxels_ : study.voxels();
        volumes_.resize(static_cast<std::size_t>(kept * kTogether));
        if (smooths()) courses_.resize(volumes_.size());
    }

    void add(int number, const std::vector<float>& volume) {
        const int place = number - first_;
        if (smooths()) {
            std::copy(volume.begin(), volume.end(), volumes_.begin() + place * voxels_);
        } else {
            auto to = volumes_.begin() + place * study_.voxels();
            for (const std::int64_t v : study_.inside) *to++ = volume[static_cast<std::size_t>(v)];
        }
        if (place + 1 == kTogether || number + 1 == run_.volumes) flush(place + 1);
    }

private:
    bool smooths() const { return study_.preparation.smoothMm > 0.0; }

    void flush(int count) {
        if (smooths()) {
            smoothCourses(count);
        } else {
            transposeVolumes(volumes_.data(), count, study_.voxels(), run_.series.data(), run_.volumes, first_);
        }
        first_ += count;
    }

    void smoothCourses(int count) {
        transposeVolumes(volumes_.data(), count, voxels_, courses_.data(), count, 0);
        smoothSeries({courses_.data(), count, study_.grid.size, study_.mask},
                     sigmaInVoxels(study_.preparation.smoothMm, study_.grid), threads_);
        float* to = run_.series.data() + first_;
        for (const std::int64_t v : study_.inside) {
            std::copy_n(courses_.data() + v * count, count, to);
            to += run_.volumes;
        }
    }

    const GroupStudy& study_;
    PreparedRun& run_;
    WorkerThreads& threads_;
    std::int64_t voxels_;
    int first_ = 0;
    std::vector<float> volumes_; // [volume][voxel]
    std::vector<float> courses_; // [voxel of the grid][volume]
};

void removeVoxelMeans(const MaskedSeries& series, WorkerThreads& threads) {
    const int volumes = series.volumes;
    forEachInside(series, threads, [volumes](float* course) {
        const double mean = std::accumulate(course, course + volumes, 0.0) / volumes;
        for (int t = 0; t < volumes; ++t) course[t] = static_cast<float>(static_cast<double>(course[t]) - mean);
    });
}

void removeVolumeMeans(PreparedRun& run) {
    const auto volumes = static_cast<std::size_t>(run.volumes);
    std::vector<double> means(volumes);
    for (std::size_t i = 0; i < run.series.size(); ++i) means[i % volumes] += static_cast<double>(run.series[i]);
    const std::size_t voxels = run.series.size() / volumes;
    for (double& mean : means) mean /= static_cast<double>(voxels);
    for (auto course = run.series.begin(); course != run.series.end(); course += run.volumes) {
        for (std::size_t t = 0; t < volumes; ++t) {
            course[static_cast<std::ptrdiff_t>(t)] -= static_cast<float>(means[t]);
        }
    }
}

ImageHeader headerOf(const GroupStudy& study, const GroupRun& run) {
    ImageHeader header = readImageHeader(run.image);
    requireSameGrid("the image", header, study.grid);
    return header;
}

} // namespace

PreparedRun prepareRun(const GroupStudy& study, const GroupRun& run, WorkerThreads& threads) {
    const ImageHeader header = headerOf(study, run);
    const auto changed = [&](bool really) {
        if (!really) return;
        throw Failure(ExitStatus::kInput, run.image.string() + " has changed since the study was planned; plan it "
                                                               "again with znica group plan.");
    };
    changed(header.volumes - study.dummyScans != run.volumes);
    PreparedRun prepared;
    prepared.volumes = run.volumes;
    prepared.series.resize(static_cast<std::size_t>(study.voxels() * run.volumes));
    {
        VolumeBuffer buffer(study, prepared, threads);
        changed(run.checksum !=
                readRunVolumes(header, study.dummyScans,
                               [&](int number, const std::vector<float>& volume) { buffer.add(number, volume); }));
    }
    const std::vector<unsigned char> all(static_cast<std::size_t>(study.voxels()), 1);
    const MaskedSeries series{prepared.series.data(), run.volumes, {static_cast<int>(study.voxels()), 1, 1}, all};
    if (study.preparation.highPassSeconds > 0.0) {
        prepared.lost = cosinesBelow(study.preparation.highPassSeconds, run.volumes, study.secondsPerVolume);
        removeCosines(series, prepared.lost, threads);
    }
    if (study.preparation.scaling == Scaling::kPercent) scaleToPercent(series, threads);
    if (study.preparation.scaling == Scaling::kUnitVariance) scaleToUnitVariance(series, threads);
    removeVoxelMeans(series, threads);
    removeVolumeMeans(prepared);
    return prepared;
}

} // namespace zn::headless
