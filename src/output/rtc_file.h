#pragma once

namespace zn {

/// Writes the component time courses as an RTC design-matrix text file, one predictor per component:
///
///     FileVersion:     2
///     Type:            DesignMatrix
///     NrOfPredictors:  2
///     NrOfDataPoints:  2
///                                    (an empty line)
///     "TC1" "TC2"                    (a blank after every name)
///         0   0.5                    (fields of 5, six significant digits, a blank after every number)
///         1  0.25
///
///   timeCourses   [0..dataPoints-1][0..predictors-1], each column rescaled to 0..1
///
/// An existing file is replaced; a file that cannot be written is not reported.
void writeRtcDesignMatrix(const char* fileName, float* const* timeCourses, int dataPoints, int predictors);

} // namespace zn
