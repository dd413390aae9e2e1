#include "numeric/transpose_matrix.h"

namespace zn {

void transposeMatrix(const float* const* source, float* const* target, int rows, int columns) {
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < columns; ++j) target[j][i] = source[i][j];
    }
}

} // namespace zn
