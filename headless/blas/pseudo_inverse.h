#pragma once

namespace zn::headless {

/// The pseudo-inverse of a matrix A of `count` columns, with LAPACK (dgelsy): a QR factorisation with column pivoting
/// finds the numerical rank, and a second orthogonal factorisation gives the solutions of smallest length when columns
/// are linearly dependent. Returns the rank.
///
///   columns    [count][length], column after column: A
///   tolerance  reciprocal condition number below which a part of the columns counts as dependent
///   inverse    [count][length], out: row k is row k of the pseudo-inverse; the coefficients of the least-squares fit
///   of
///              the columns to y are its rows times y
///
/// Throws std::bad_alloc when LAPACK finds no work space. Method: Golub and Van Loan, Matrix Computations, 4th ed.,
/// section 5.5.
int pseudoInverse(const double* columns, int count, int length, double tolerance, double* inverse);

/// The numerical rank of the same columns.
int rankOf(const double* columns, int count, int length, double tolerance);

} // namespace zn::headless
