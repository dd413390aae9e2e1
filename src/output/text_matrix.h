#pragma once

#include "output/text_file.h"

namespace zn {

// Matrices and vectors as plain text, for inspection outside the host.
//
// A matrix is written row by row, every element right-aligned in its field and followed by one blank, including the
// last of a row. A vector is written one element per line, without a blank. No header, no dimensions, no comments:
//
//          0.25        1.5     (width 10)
//           1.5      -0.25

/// m[rowLow..rowHigh][columnLow..columnHigh], an offset-indexed matrix of float, double or int.
template <class T>
void writeTextMatrix(const char* fileName, T* const* m, int rowLow, int rowHigh, int columnLow, int columnHigh,
                     int width) {
    TextFile file(fileName);
    for (int i = rowLow; i <= rowHigh; ++i) {
        for (int j = columnLow; j <= columnHigh; ++j) {
            file.field(m[i][j], width);
            file.blank();
        }
        file.endLine();
    }
}

/// v[low..high], an offset-indexed vector of float, double or int.
template <class T> void writeTextVector(const char* fileName, const T* v, int low, int high, int width) {
    TextFile file(fileName);
    for (int i = low; i <= high; ++i) {
        file.field(v[i], width);
        file.endLine();
    }
}

/// m[1..rows][1..columns] in fields of 10: "Covariance.txt".
void writeDoubleMatrix(const char* fileName, double* const* m, int rows, int columns);

/// m[0..rows-1][0..columns-1] in fields of 5: "ParamsMatrix.txt".
void writeFloatMatrix(const char* fileName, float* const* m, int rows, int columns);

/// Writes "ICA.vox", the voxels of the analysis in data-matrix order, as text:
///
///       4821              number of voxels, table[1][1], width 6, then one blank
///        17     4    22   grid x y z counted from 1, width 5 each, one blank after every number
///
///   table   [1..rows][1..columns]; of row 1 only the first element is read; one row per voxel from row 2 on
void writeVoxelTable(const char* fileName, int* const* table, int rows, int columns);

} // namespace zn
