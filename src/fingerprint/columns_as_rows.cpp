#include "fingerprint/columns_as_rows.h"

namespace zn {

OffsetMatrix<float> columnsAsRows(const float* const* source, int rows, int columns) {
    OffsetMatrix<float> target(0, columns - 1, 0, rows - 1);
    for (int i = 0; i < rows; ++i) {
        for (int j = 0; j < columns; ++j) target[j][i] = source[i][j];
    }
    return target;
}

} // namespace zn
