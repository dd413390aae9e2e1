#pragma once

#include "headless/blas/worker_threads.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace zn::headless {

/// The time courses of the voxels in a mask, in double precision, by pieces of the grid.
template <class Value> class MaskedCourses {
public:
    /// Fixed, so that sums over the pieces do not depend on the number of threads.
    static constexpr int kPieces = 16;

    struct Course {
        const Value* values;
        double factor;
        double at(int t) const { return factor * static_cast<double>(values[t]); }
    };

    ///   values   [course][volumes]
    ///   mask     one byte per voxel of the grid, nonzero: inside; must outlive the object
    ///   rows     [voxel of the grid], where its course is among the values; empty: they are those of the entire grid
    MaskedCourses(const Value* values, int volumes, const std::vector<unsigned char>& mask,
                  std::vector<std::int64_t> rows = {})
        : values_(values), volumes_(volumes), mask_(mask), rows_(std::move(rows)) {}

    int volumes() const { return volumes_; }
    std::size_t gridVoxels() const { return mask_.size(); }
    std::int64_t voxelsInside() const {
        return static_cast<std::int64_t>(mask_.size()) - std::count(mask_.begin(), mask_.end(), 0);
    }
    bool inside(std::int64_t v) const { return mask_[static_cast<std::size_t>(v)] != 0; }

    /// That of a voxel of the grid, which must be inside.
    Course course(std::int64_t v) const {
        const auto voxel = static_cast<std::size_t>(v);
        return {values_ + (rows_.empty() ? v : rows_[voxel]) * volumes_, factors_.empty() ? 1.0 : factors_[voxel]};
    }

    /// Calls use(v) for the voxels of a piece that are inside.
    template <class Use> void forPiece(int piece, Use use) const {
        const auto voxels = static_cast<std::int64_t>(mask_.size());
        for (std::int64_t v = voxels * piece / kPieces; v < voxels * (piece + 1) / kPieces; ++v) {
            if (inside(v)) use(v);
        }
    }

    /// From then on, the course of voxel v of the grid is multiplied by factors[v]; empty: by 1.
    void scale(std::vector<double> factors) { factors_ = std::move(factors); }

private:
    const Value* values_;
    int volumes_;
    const std::vector<unsigned char>& mask_;
    std::vector<std::int64_t> rows_;
    std::vector<double> factors_;
};

/// The mean over the voxels inside: [volumes].
template <class Value> std::vector<double> meanCourse(const MaskedCourses<Value>& courses, WorkerThreads& threads) {
    constexpr int kPieces = MaskedCourses<Value>::kPieces;
    const auto volumes = static_cast<std::size_t>(courses.volumes());
    std::vector<std::vector<double>> sums(kPieces, std::vector<double>(volumes));
    threads.run(kPieces, [&](int piece) {
        std::vector<double>& sum = sums[static_cast<std::size_t>(piece)];
        courses.forPiece(piece, [&](std::int64_t v) {
            const auto course = courses.course(v);
            for (std::size_t t = 0; t < volumes; ++t) sum[t] += course.at(static_cast<int>(t));
        });
    });
    std::vector<double> mean(volumes);
    const auto voxels = static_cast<double>(courses.voxelsInside());
    for (std::size_t t = 0; t < volumes; ++t) {
        for (const auto& sum : sums) mean[t] += sum[t];
        mean[t] /= voxels;
    }
    return mean;
}

} // namespace zn::headless
