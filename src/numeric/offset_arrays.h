#pragma once

namespace zn {

// Vectors and matrices whose valid index range starts at any lower bound.
//
// A vector is one heap block of exactly nh - nl + 1 elements; its handle is the block's address moved back by nl.
// A matrix is a block of row pointers and one contiguous row-major data block, both moved back by their lower bounds;
// &m[nrl][ncl] is a flat array of all elements. Elements are not initialised.
//
// Counts are 32-bit: a count or a product of counts above 2^31 - 1 is an allocation failure. Every allocation failure
// goes to nrerror with the text given here; no null handle is ever returned. A range without elements (nh = nl - 1)
// yields a handle that must not be indexed.
//
// The caller owns the handle and releases it with the free function of the same element type and the same lower
// bounds; the upper bounds are not used there.

float* vector(int nl, int nh);   ///< nrerror("allocation failure in vector()")
int* ivector(int nl, int nh);    ///< nrerror("allocation failure in ivector()")
double* dvector(int nl, int nh); ///< nrerror("allocation failure in dvector()")

/// Valid for nrl <= i <= nrh, ncl <= j <= nch. All three fail with "allocation failure 1 in matrix()" for the row
/// pointers and "allocation failure 2 in matrix()" for the data, whatever their element type.
float** matrix(int nrl, int nrh, int ncl, int nch);
double** dmatrix(int nrl, int nrh, int ncl, int nch);
int** imatrix(int nrl, int nrh, int ncl, int nch);

void free_vector(float* v, int nl, int nh);
void free_ivector(int* v, int nl, int nh);
void free_dvector(double* v, int nl, int nh);
void free_matrix(float** m, int nrl, int nrh, int ncl, int nch);
void free_dmatrix(double** m, int nrl, int nrh, int ncl, int nch);
void free_imatrix(int** m, int nrl, int nrh, int ncl, int nch);

} // namespace zn
