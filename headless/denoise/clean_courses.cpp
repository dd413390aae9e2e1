#include "headless/denoise/clean_courses.h"

#include "headless/blas/block_product.h"
#include "headless/denoise/voxel_units.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

namespace zn::headless {

namespace {

constexpr int kBlock = 64; // voxels; their courses stay in the second-level cache

// The sums over the voxels of one unit.
struct Sums {
    std::vector<double> changesBefore; // [T]
    std::vector<double> changesAfter;
    double squaresBefore = 0.0;
    double squaresAfter = 0.0;
    std::vector<double> products; // [r][r]
    std::int64_t voxels = 0;

    Sums(std::size_t volumes, std::size_t count)
        : changesBefore(volumes), changesAfter(volumes), products(count * count) {}
};

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

void addChanges(const double* course, std::vector<double>& sums) {
    for (std::size_t t = 1; t < sums.size(); ++t) {
        const double change = course[t] - course[t - 1];
        sums[t] += change * change;
    }
}

class Cleaner {
public:
    Cleaner(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds, const Removal& removal,
            Cleaning& cleaning)
        : courses_(courses), kinds_(kinds), removal_(removal), cleaning_(cleaning), volumes_(courses.volumes()) {}

    void cleanBlock(Scratch& scratch, Sums& sums) {
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

    void load(Scratch& scratch, int i, Sums& sums) {
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
    void store(Scratch& scratch, int i, Sums& sums) {
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

void add(const std::vector<double>& part, std::vector<double>& sum) {
    std::transform(part.begin(), part.end(), sum.begin(), sum.begin(), std::plus<>());
}

std::vector<double> rootMeans(std::vector<double> sums, std::int64_t voxels) {
    for (double& sum : sums) sum = std::sqrt(sum / static_cast<double>(voxels));
    sums.front() = std::numeric_limits<double>::quiet_NaN(); // the first volume has no predecessor
    return sums;
}

} // namespace

Cleaning cleanCourses(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds, const Removal& removal,
                      WorkerThreads& threads) {
    const auto volumes = static_cast<std::size_t>(courses.volumes());
    const auto count = static_cast<std::size_t>(removal.count);
    Cleaning cleaning;
    for (auto* map : {&cleaning.mean, &cleaning.sdBefore, &cleaning.sdAfter}) map->resize(kinds.size());
    std::vector<Sums> sums(static_cast<std::size_t>(unitsIn(courses.voxels)), Sums(volumes, count));
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

    Sums all(volumes, count);
    for (const Sums& part : sums) {
        add(part.changesBefore, all.changesBefore);
        add(part.changesAfter, all.changesAfter);
        add(part.products, all.products);
        all.squaresBefore += part.squaresBefore;
        all.squaresAfter += part.squaresAfter;
        all.voxels += part.voxels;
    }
    cleaning.dvarsBefore = rootMeans(std::move(all.changesBefore), all.voxels);
    cleaning.dvarsAfter = rootMeans(std::move(all.changesAfter), all.voxels);
    cleaning.squaresBefore = all.squaresBefore;
    cleaning.squaresAfter = all.squaresAfter;
    cleaning.products = std::move(all.products);
    return cleaning;
}

double explainedSquares(const Cleaning& cleaning, const Removal& removal, int first, int end) {
    const auto volumes = static_cast<std::size_t>(removal.volumes);
    const auto r = static_cast<std::size_t>(removal.count);
    double sum = 0.0;
    for (auto j = static_cast<std::size_t>(first); j < static_cast<std::size_t>(end); ++j) {
        for (auto k = static_cast<std::size_t>(first); k < static_cast<std::size_t>(end); ++k) {
            const double* left = removal.columns.data() + j * volumes;
            const double* right = removal.columns.data() + k * volumes;
            sum += std::inner_product(left, left + volumes, right, 0.0) * cleaning.products[j * r + k];
        }
    }
    return sum;
}

} // namespace zn::headless
