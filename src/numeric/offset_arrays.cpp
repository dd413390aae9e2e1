#include "numeric/offset_arrays.h"

#include "numeric/nrerror.h"

#include <cstddef>
#include <cstdlib>
#include <limits>

namespace zn {

namespace {

constexpr long long kMostElements = std::numeric_limits<int>::max();

long long count(int low, int high) {
    return static_cast<long long>(high) - low + 1;
}

// A block of `elements` elements; calls nrerror(failure) when it cannot be allocated.
template <class T> T* allocate(long long elements, const char* failure) {
    if (elements < 0 || elements > kMostElements) nrerror(failure);
    const std::size_t bytes = static_cast<std::size_t>(elements) * sizeof(T);
    void* block = std::malloc(bytes > 0 ? bytes : sizeof(T)); // malloc(0) may return null although memory is available
    if (!block) nrerror(failure);
    return static_cast<T*>(block);
}

template <class T> T* makeVector(int nl, int nh, const char* failure) {
    return allocate<T>(count(nl, nh), failure) - nl;
}

template <class T> void freeVector(T* v, int nl) {
    std::free(v + nl);
}

template <class T> T** makeMatrix(int nrl, int nrh, int ncl, int nch) {
    const long long rows = count(nrl, nrh);
    const long long columns = count(ncl, nch);
    T** m = allocate<T*>(rows, "allocation failure 1 in matrix()") - nrl;

    const bool countable = columns <= 0 || rows <= kMostElements / columns;
    const auto fail = [&] {
        std::free(m + nrl);
        nrerror("allocation failure 2 in matrix()");
    };
    if (!countable || columns < 0) fail();
    const std::size_t bytes = static_cast<std::size_t>(rows * columns) * sizeof(T);
    void* data = std::malloc(bytes > 0 ? bytes : sizeof(T));
    if (!data) fail();

    m[nrl] = static_cast<T*>(data) - ncl;
    for (int i = nrl + 1; i <= nrh; ++i) m[i] = m[i - 1] + columns;
    return m;
}

template <class T> void freeMatrix(T** m, int nrl, int ncl) {
    std::free(m[nrl] + ncl);
    std::free(m + nrl);
}

} // namespace

float* vector(int nl, int nh) {
    return makeVector<float>(nl, nh, "allocation failure in vector()");
}

int* ivector(int nl, int nh) {
    return makeVector<int>(nl, nh, "allocation failure in ivector()");
}

double* dvector(int nl, int nh) {
    return makeVector<double>(nl, nh, "allocation failure in dvector()");
}

float** matrix(int nrl, int nrh, int ncl, int nch) {
    return makeMatrix<float>(nrl, nrh, ncl, nch);
}

double** dmatrix(int nrl, int nrh, int ncl, int nch) {
    return makeMatrix<double>(nrl, nrh, ncl, nch);
}

int** imatrix(int nrl, int nrh, int ncl, int nch) {
    return makeMatrix<int>(nrl, nrh, ncl, nch);
}

void free_vector(float* v, int nl, int /*nh*/) {
    freeVector(v, nl);
}

void free_ivector(int* v, int nl, int /*nh*/) {
    freeVector(v, nl);
}

void free_dvector(double* v, int nl, int /*nh*/) {
    freeVector(v, nl);
}

void free_matrix(float** m, int nrl, int /*nrh*/, int ncl, int /*nch*/) {
    freeMatrix(m, nrl, ncl);
}

void free_dmatrix(double** m, int nrl, int /*nrh*/, int ncl, int /*nch*/) {
    freeMatrix(m, nrl, ncl);
}

void free_imatrix(int** m, int nrl, int /*nrh*/, int ncl, int /*nch*/) {
    freeMatrix(m, nrl, ncl);
}

} // namespace zn
