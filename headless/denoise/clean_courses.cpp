#include "headless/denoise/clean_courses.h"

#include "headless/blas/block_product.h"
#include "headless/denoise/cleaning_sums.h"
#include "headless/denoise/voxel_units.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zn::headless {

namespace {

constexpr int kBlock = 64; // voxels; their courses stay in the second-level cache

struct Scratch {
    std::vector<double> courses; // [kBlock][T], centred
    std::vector<double> parts;   // [kBlock][T], to be removed
    std::vector<double> coefficients;
    std::vector<std::int64_t> voxels; // of the block

    Scratch(std::size_t volumes, std::size_t count)
        : courses(kBlock * volumes), parts(kBlock * volumes), coefficients(kBlock * count) {}
};

double squaresOf(const double* course, int volumes) {
    return std::inner_product(course, course + volumes, course, 0.0);
}

class Cleaner {
public:
    Cleaner(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds, const Removal& removal,
            Cleaning& cleaning)
        : courses_(courses), kinds_(kinds), removal_(removal), cleaning_(cleaning), volumes_(courses.volumes()) {}

    void cleanBlock(Scratch& scratch, CleaningSums& sums) {
        if (scratch.voxels.empty()) return;
        const auto count = static_cast<int>(scratch.voxels.size());
        for (int i = 0; i < count; ++i) load(scratch, i, sums);
        findParts(scratch, count);
        for (int i = 0; i < count; ++i) store(scratch, i, sums);
        const int r = removal_.count;
        if (r > 0) {
            const double* b = scratch.coefficients.data();
            blockProduct({b, r, true}, {b, r}, r, r, count, true, sums.products.data(), r);
        }
        scratch.voxels.clear();
    }

private:
    double* row(std::vector<double>& rows, int i) const { return rows.data() + std::int64_t{1} * i * volumes_; }
    bool counts(std::int64_t voxel) const { return kinds_[static_cast<std::size_t>(voxel)] == VoxelKind::kInMask; }
    float sd(double squares) const { return static_cast<float>(std::sqrt(squares / (volumes_ - 1))); }

    void load(Scratch& scratch, int i, CleaningSums& sums) {
        const std::int64_t voxel = scratch.voxels[static_cast<std::size_t>(i)];
        const float* course = courses_.course(voxel);
        double* centred = row(scratch.courses, i);
        const double mean = std::accumulate(course, course + volumes_, 0.0) / volumes_;
        for (int t = 0; t < volumes_; ++t) centred[t] = static_cast<double>(course[t]) - mean;
        const double squares = squaresOf(centred, volumes_);
        cleaning_.mean[static_cast<std::size_t>(voxel)] = static_cast<float>(mean);
        cleaning_.sdBefore[static_cast<std::size_t>(voxel)] = sd(squares);
        if (!counts(voxel)) return;
        sums.squaresBefore += squares;
        addChanges(centred, sums.changesBefore);
        ++sums.voxels;
    }

    void findParts(Scratch& scratch, int count) const {
        const int r = removal_.count;
        if (r == 0) return;
        blockProduct({scratch.courses.data(), volumes_}, {removal_.weights.data(), volumes_, true}, count, r, volumes_,
                     false, scratch.coefficients.data(), r);
        blockProduct({scratch.coefficients.data(), r}, {removal_.columns.data(), volumes_}, count, volumes_, r, false,
                     scratch.parts.data(), volumes_);
    }

    // Writes the cleaned course. The coefficients of a voxel outside the mask are cleared: they do not count.
    void store(Scratch& scratch, int i, CleaningSums& sums) {
        const std::int64_t voxel = scratch.voxels[static_cast<std::size_t>(i)];
        float* course = courses_.course(voxel);
        double* centred = row(scratch.courses, i);
        const double* part = row(scratch.parts, i); // zeros without columns
        for (int t = 0; t < volumes_; ++t) {
            course[t] = static_cast<float>(static_cast<double>(course[t]) - part[t]);
            centred[t] -= part[t];
        }
        const double squares = squaresOf(centred, volumes_);
        cleaning_.sdAfter[static_cast<std::size_t>(voxel)] = sd(squares);
        if (!counts(voxel)) {
            std::fill_n(scratch.coefficients.begin() + std::int64_t{1} * i * removal_.count, removal_.count, 0.0);
            return;
        }
        sums.squaresAfter += squares;
        addChanges(centred, sums.changesAfter);
    }

    const AnalysedCourses& courses_;
    const std::vector<VoxelKind>& kinds_;
    const Removal& removal_;
    Cleaning& cleaning_;
    int volumes_;
};

} // namespace

Cleaning cleanCourses(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds, const Removal& removal,
                      WorkerThreads& threads) {
    const auto volumes = static_cast<std::size_t>(courses.volumes());
    const auto count = static_cast<std::size_t>(removal.count);
    Cleaning cleaning;
    for (auto* map : {&cleaning.mean, &cleaning.sdBefore, &cleaning.sdAfter}) map->resize(kinds.size());
    std::vector<CleaningSums> sums(static_cast<std::size_t>(unitsIn(courses.voxels)), CleaningSums(volumes, count));
    std::vector<Scratch> scratch(static_cast<std::size_t>(threads.threads()), Scratch(volumes, count));
    for (Scratch& own : scratch) own.voxels.reserve(kBlock); // nothing is allocated below
    Cleaner cleaner(courses, kinds, removal, cleaning);
    forEachUnit(threads, courses.voxels, [&](int worker, int unit, std::int64_t first, std::int64_t end) {
        Scratch& own = scratch[static_cast<std::size_t>(worker)];
        for (std::int64_t v = first; v < end; ++v) {
            const VoxelKind kind = kinds[static_cast<std::size_t>(v)];
            if (kind == VoxelKind::kConstant || kind == VoxelKind::kNotFinite) continue;
            own.voxels.push_back(v);
            if (own.voxels.size() == kBlock) cleaner.cleanBlock(own, sums[static_cast<std::size_t>(unit)]);
        }
        cleaner.cleanBlock(own, sums[static_cast<std::size_t>(unit)]);
    });

    CleaningSums all(volumes, count);
    for (const CleaningSums& part : sums) all.add(part);
    cleaning.dvarsBefore = all.dvars(all.changesBefore);
    cleaning.dvarsAfter = all.dvars(all.changesAfter);
    cleaning.squaresBefore = all.squaresBefore;
    cleaning.squaresAfter = all.squaresAfter;
    cleaning.products = std::move(all.products);
    return cleaning;
}

} // namespace zn::headless
