#include "output/text_matrix.h"

namespace zn {

void writeDoubleMatrix(const char* fileName, double* const* m, int rows, int columns) {
    writeTextMatrix(fileName, m, 1, rows, 1, columns, 10);
}

void writeFloatMatrix(const char* fileName, float* const* m, int rows, int columns) {
    writeTextMatrix(fileName, m, 0, rows - 1, 0, columns - 1, 5);
}

void writeVoxelTable(const char* fileName, int* const* table, int rows, int columns) {
    TextFile file(fileName);
    file.field(table[1][1], 6);
    file.blank();
    file.endLine();
    for (int i = 2; i <= rows; ++i) {
        for (int j = 1; j <= columns; ++j) {
            file.field(table[i][j], 5);
            file.blank();
        }
        file.endLine();
    }
}

} // namespace zn
