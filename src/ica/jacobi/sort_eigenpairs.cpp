#include "ica/jacobi/sort_eigenpairs.h"

#include <utility>

namespace zn {

void sortEigenpairs(double* d, double** v, int n) {
    for (int k = 1; k < n; ++k) {
        int largest = k;
        for (int j = k + 1; j <= n; ++j) {
            if (d[j] >= d[largest]) largest = j; // the later one on equal values
        }
        if (largest == k) continue;
        std::swap(d[k], d[largest]);
        for (int row = 1; row <= n; ++row) std::swap(v[row][k], v[row][largest]);
    }
}

} // namespace zn
