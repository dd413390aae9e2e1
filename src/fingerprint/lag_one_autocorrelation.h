#pragma once

namespace zn {

/// Correlation of each component's time course with itself one volume later, in single precision and index order.
///
///   timeCourses  [0..t-1][0..k-1]  in: one column per component
///   signedOut    [0..k-1]          out: (sum of z_i z_(i+1)) / (sum of z_i^2), i from the first to the last but one,
///                                  z the time course standardised by its mean and sample standard deviation
///   absoluteOut  [0..k-1]          out: its magnitude
///
/// A constant time course, or fewer than two volumes, yields NaN.
void lagOneAutocorrelation(const float* const* timeCourses, int t, int k, float* signedOut, float* absoluteOut);

} // namespace zn
