#pragma once

namespace zn {

// Rescalings of one feature across the k components, so that the smallest becomes 0 and the largest 1.
//
//   input   [0..k-1]  in
//   output  [0..k-1]  out; may be the input
//
// Logarithms and powers are computed in double precision and stored as floats. The smallest and the largest start with
// the first component and are replaced on strict comparison only, so a leading NaN stays and spreads to all.

/// |ln(input)| minus its minimum, divided by the maximum of the result.
void logMagnitudeUnitRange(const float* input, int k, float* output);

/// ln(|input| / smallest |input|), divided by its maximum.
void logRatioUnitRange(const float* input, int k, float* output);

/// exp(input) minus its minimum, divided by the maximum of the result.
void expUnitRange(const float* input, int k, float* output);

/// The input divided by its largest value; the smallest does not become 0.
void scaleToLargest(const float* input, int k, float* output);

} // namespace zn
