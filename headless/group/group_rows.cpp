#include "headless/group/group_rows.h"

#include "headless/blas/block_product.h"
#include "headless/blas/one_blas_thread.h"
#include "headless/blas/symmetric_matrix.h"
#include "headless/group/voxel_blocks.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace zn::headless {

namespace {

constexpr int kMostRows = 1000;
constexpr double kSmallest = 1e-7; // of the largest eigenvalue: below, a direction is single-precision rounding

// What is added to the rows of a group. `block` copies some voxels in double precision, [voxel][row].
class Addition {
public:
    virtual ~Addition() = default;
    virtual int rows() const = 0;
    virtual void block(std::int64_t first, int count, double* values) const = 0;
};

class Series : public Addition {
public:
    Series(const float* values, int volumes) : values_(values), volumes_(volumes) {}
    int rows() const override { return volumes_; }
    void block(std::int64_t first, int count, double* values) const override {
        std::copy_n(values_ + first * volumes_, std::int64_t{1} * count * volumes_, values);
    }

private:
    const float* values_;
    int volumes_;
};

class Rows : public Addition {
public:
    explicit Rows(const GroupRows& group) : group_(group) {}
    int rows() const override { return group_.count(); }
    void block(std::int64_t first, int count, double* values) const override {
        for (int row = 0; row < rows(); ++row) {
            const float* from = group_.values.data() + row * group_.voxels + first;
            for (int v = 0; v < count; ++v) values[std::int64_t{1} * v * rows() + row] = static_cast<double>(from[v]);
        }
    }

private:
    const GroupRows& group_;
};

// W (m rows) and X (n rows) over the same voxels, block by block.
class Stack {
public:
    Stack(GroupRows& group, const Addition& added)
        : group_(group), added_(added), m_(group.count()), n_(added.rows()), order_(m_ + n_) {}

    int order() const { return order_; }
    int blocks() const { return blocksIn(group_.voxels); }

    // The inner products of all rows, [order][order], upper triangle. Those of W with itself are known.
    std::vector<double> innerProducts(WorkerThreads& threads) const {
        std::vector<double> sum(product(order_, order_));
        for (int row = 0; row < m_; ++row) {
            sum[product(row, order_) + static_cast<std::size_t>(row)] =
                group_.eigenvalues[static_cast<std::size_t>(row)];
        }
        const int together = std::min(threads.threads(), blocks());
        std::vector<std::vector<double>> parts(static_cast<std::size_t>(together));
        for (int first = 0; first < blocks(); first += together) {
            const int count = std::min(together, blocks() - first);
            threads.run(count, [&](int i) { parts[static_cast<std::size_t>(i)] = blockProducts(first + i); });
            for (int i = 0; i < count; ++i) add(parts[static_cast<std::size_t>(i)], sum);
        }
        return sum;
    }

    // W = U [W; X], in place: every block of voxels needs nothing but itself.
    //   vectors   [rows][order]: U
    void project(const std::vector<double>& vectors, int rows, WorkerThreads& threads) {
        group_.values.resize(product(std::max(rows, m_), group_.voxels));
        threads.run(blocks(), [&](int number) {
            const Block block(*this, number);
            std::vector<double> result(product(rows, block.count));
            blockProduct({vectors.data() + m_, order_}, {block.added.data(), n_, true}, rows, block.count, n_, false,
                         result.data(), block.count);
            if (m_ > 0) {
                blockProduct({vectors.data(), order_}, {block.rows.data(), block.count}, rows, block.count, m_, true,
                             result.data(), block.count);
            }
            for (int row = 0; row < rows; ++row) {
                const double* from = result.data() + product(row, block.count);
                float* to = group_.values.data() + row * group_.voxels + block.first;
                std::transform(from, from + block.count, to, [](double value) { return static_cast<float>(value); });
            }
        });
        group_.values.resize(product(rows, group_.voxels));
    }

private:
    struct Block {
        Block(const Stack& stack, int number)
            : first(number * kVoxelsPerBlock),
              count(static_cast<int>(std::min(kVoxelsPerBlock, stack.group_.voxels - first))),
              rows(product(stack.m_, count)), added(product(stack.n_, count)) {
            for (int row = 0; row < stack.m_; ++row) {
                const float* from = stack.group_.values.data() + row * stack.group_.voxels + first;
                std::copy_n(from, count, rows.data() + product(row, count));
            }
            stack.added_.block(first, count, added.data());
        }

        std::int64_t first;
        int count;
        std::vector<double> rows;  // [row][voxel]
        std::vector<double> added; // [voxel][row]
    };

    // W Xt, [m][n], and then X Xt, [n][n], of one block.
    std::vector<double> blockProducts(int number) const {
        const Block block(*this, number);
        std::vector<double> result(product(order_, n_));
        if (m_ > 0) {
            blockProduct({block.rows.data(), block.count}, {block.added.data(), n_}, m_, n_, block.count, false,
                         result.data(), n_);
        }
        addCrossProducts(block.added.data(), block.count, n_, 1.0, result.data() + product(m_, n_));
        return result;
    }

    void add(const std::vector<double>& part, std::vector<double>& sum) const {
        for (int row = 0; row < order_; ++row) {
            const double* from = part.data() + product(row, n_);
            double* to = sum.data() + product(row, order_) + m_;
            for (int column = 0; column < n_; ++column) to[column] += from[column];
        }
    }

    GroupRows& group_;
    const Addition& added_;
    int m_;
    int n_;
    int order_;
};

void absorb(GroupRows& group, const Addition& added, int keep, WorkerThreads& threads) {
    const OneBlasThread oneThread;
    Stack stack(group, added);
    std::vector<double> vectors = stack.innerProducts(threads);
    std::vector<double> eigenvalues(static_cast<std::size_t>(stack.order()));
    if (symmetricEigenpairs(vectors.data(), stack.order(), eigenvalues.data()) != 0) {
        throw std::runtime_error("the eigenvalues of the group's rows did not converge; look for damaged images.");
    }
    const double smallest = kSmallest * std::max(eigenvalues.front(), 0.0);
    const auto rows = std::count_if(eigenvalues.begin(), eigenvalues.end(), [&](double e) { return e > smallest; });
    eigenvalues.resize(static_cast<std::size_t>(std::min<std::int64_t>(rows, keep)));
    stack.project(vectors, static_cast<int>(eigenvalues.size()), threads);
    group.eigenvalues = std::move(eigenvalues);
}

} // namespace

void absorbRun(GroupRows& group, const float* series, int volumes, int keep, WorkerThreads& threads) {
    group.values.reserve(product(keep, group.voxels)); // once, so that no copy of the rows exists while they grow
    absorb(group, Series(series, volumes), keep, threads);
    const float* end = series + group.voxels * volumes;
    group.squares += std::accumulate(series, end, 0.0, [](double sum, float value) {
        return sum + static_cast<double>(value) * static_cast<double>(value);
    });
}

void absorbGroup(GroupRows& group, const GroupRows& other, int keep, WorkerThreads& threads) {
    group.values.reserve(product(std::min(keep, group.count() + other.count()), group.voxels));
    absorb(group, Rows(other), keep, threads);
    group.squares += other.squares;
}

int rowsToKeep(const std::vector<int>& volumes) {
    if (volumes.empty()) return 0;
    const std::int64_t all = std::accumulate(volumes.begin(), volumes.end(), std::int64_t{0});
    const std::int64_t longest = *std::max_element(volumes.begin(), volumes.end());
    return static_cast<int>(std::min({all, 2 * longest - 1, std::int64_t{kMostRows}}));
}

} // namespace zn::headless
