#pragma once

namespace zn {

/// Finds the predictor of the design matrix that correlates most strongly with each component's time course, of either
/// sign.
///
///   designMatrix        [0..t-1][0..predictors-1]  in: unused columns are 0 and match nothing
///   timeCourses         [0..t-1][0..k-1]           in
///   bestCorrelation     [0..k-1]  out: largest |correlation|, 0 without a match
///   bestIndex           [0..k-1]  out: number of that predictor, counted from 1; the lower one of two equal ones; 1
///                                 without a match
///   standardDeviation   [0..k-1]  out: sample standard deviation of the time course
void matchDesignMatrix(const float* const* designMatrix, const float* const* timeCourses, int predictors, int t, int k,
                       float* bestCorrelation, float* bestIndex, float* standardDeviation);

} // namespace zn
