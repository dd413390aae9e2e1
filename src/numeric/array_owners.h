#pragma once

#include "numeric/offset_arrays.h"

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace zn {

namespace detail {

template <class T> struct OffsetArrays; // which functions allocate and free arrays of T

template <> struct OffsetArrays<float> {
    static constexpr auto makeVector = vector;
    static constexpr auto freeVector = free_vector;
    static constexpr auto makeMatrix = matrix;
    static constexpr auto freeMatrix = free_matrix;
};

template <> struct OffsetArrays<double> {
    static constexpr auto makeVector = dvector;
    static constexpr auto freeVector = free_dvector;
    static constexpr auto makeMatrix = dmatrix;
    static constexpr auto freeMatrix = free_dmatrix;
};

template <> struct OffsetArrays<int> {
    static constexpr auto makeVector = ivector;
    static constexpr auto freeVector = free_ivector;
    static constexpr auto makeMatrix = imatrix;
    static constexpr auto freeMatrix = free_imatrix;
};

} // namespace detail

/// Owns an offset-indexed vector v[low] .. v[high]; elements are not initialised. Fails as `vector` does.
template <class T> class OffsetVector {
public:
    OffsetVector() = default;
    OffsetVector(int low, int high) : low_(low), high_(high), handle_(detail::OffsetArrays<T>::makeVector(low, high)) {}
    OffsetVector(OffsetVector&& other) noexcept { swap(other); }
    OffsetVector& operator=(OffsetVector&& other) noexcept {
        OffsetVector(std::move(other)).swap(*this);
        return *this;
    }
    ~OffsetVector() {
        if (handle_) detail::OffsetArrays<T>::freeVector(handle_, low_, high_);
    }

    /// The plain handle, for routines that take one; ownership stays here.
    T* get() const { return handle_; }
    T& operator[](int index) const { return handle_[index]; }
    int low() const { return low_; }
    int high() const { return high_; }

    void fill(T value) {
        for (int i = low_; i <= high_; ++i) handle_[i] = value;
    }
    /// Releases the array before the owner's lifetime ends.
    void release() { OffsetVector().swap(*this); }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    void swap(OffsetVector& other) noexcept {
        std::swap(low_, other.low_);
        std::swap(high_, other.high_);
        std::swap(handle_, other.handle_);
    }

    int low_ = 0;
    int high_ = -1;
    T* handle_ = nullptr;
};

/// Owns an offset-indexed matrix m[rowLow..rowHigh][columnLow..columnHigh]; elements are not initialised. Fails as
/// `matrix` does.
template <class T> class OffsetMatrix {
public:
    OffsetMatrix() = default;
    OffsetMatrix(int rowLow, int rowHigh, int columnLow, int columnHigh)
        : rowLow_(rowLow), rowHigh_(rowHigh), columnLow_(columnLow), columnHigh_(columnHigh),
          handle_(detail::OffsetArrays<T>::makeMatrix(rowLow, rowHigh, columnLow, columnHigh)) {}
    OffsetMatrix(OffsetMatrix&& other) noexcept { swap(other); }
    OffsetMatrix& operator=(OffsetMatrix&& other) noexcept {
        OffsetMatrix(std::move(other)).swap(*this);
        return *this;
    }
    ~OffsetMatrix() {
        if (handle_) {
            detail::OffsetArrays<T>::freeMatrix(handle_, rowLow_, rowHigh_, columnLow_, columnHigh_);
        }
    }

    /// The plain handle, for routines that take one; ownership stays here.
    T** get() const { return handle_; }
    T* operator[](int row) const { return handle_[row]; }

    void fill(T value) {
        for (int i = rowLow_; i <= rowHigh_; ++i) {
            for (int j = columnLow_; j <= columnHigh_; ++j) handle_[i][j] = value;
        }
    }
    /// Releases the array before the owner's lifetime ends.
    void release() { OffsetMatrix().swap(*this); }
    explicit operator bool() const { return handle_ != nullptr; }

private:
    void swap(OffsetMatrix& other) noexcept {
        std::swap(rowLow_, other.rowLow_);
        std::swap(rowHigh_, other.rowHigh_);
        std::swap(columnLow_, other.columnLow_);
        std::swap(columnHigh_, other.columnHigh_);
        std::swap(handle_, other.handle_);
    }

    int rowLow_ = 0;
    int rowHigh_ = -1;
    int columnLow_ = 0;
    int columnHigh_ = -1;
    T** handle_ = nullptr;
};

/// Owns a zero-filled, contiguous, row-major block of doubles, rows x columns, counted in 64 bits. The large matrices
/// that a run passes to the host's products are blocks of this kind. Throws std::bad_alloc.
class ZeroedBlock {
public:
    ZeroedBlock() = default;
    ZeroedBlock(long long rows, long long columns) : columns_(columns) {
        constexpr long long most = std::numeric_limits<std::ptrdiff_t>::max() / static_cast<long long>(sizeof(double));
        if (rows < 0 || columns < 0 || (columns > 0 && rows > most / columns)) throw std::bad_alloc();
        const auto elements = static_cast<std::size_t>(rows * columns);
        block_.reset(static_cast<double*>(std::calloc(elements > 0 ? elements : 1, sizeof(double))));
        if (!block_) throw std::bad_alloc();
    }

    double* get() const { return block_.get(); }
    double* row(long long index) const { return block_.get() + index * columns_; }
    /// Releases the block before the owner's lifetime ends.
    void release() { block_.reset(); }

private:
    struct Free {
        void operator()(double* block) const { std::free(block); }
    };

    long long columns_ = 0;
    std::unique_ptr<double[], Free> block_;
};

} // namespace zn
