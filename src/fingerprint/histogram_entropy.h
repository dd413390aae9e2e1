#pragma once

namespace zn {

/// Relative frequencies of each row's values in `nbins` bins of equal width between the row's smallest and largest.
///
///   rows       [0..k-1][0..n-1]      in
///   nbins                            if 0, nothing is written
///   histogram  [0..k-1][0..nbins-1]  out: number of values in the bin, divided by n
///
/// A value belongs to the first bin whose upper edge is not below it. The edges are accumulated in single precision, so
/// the last one may end up below the largest value, which is then not counted.
void computeHistograms(const float* const* rows, int k, int n, int nbins, float** histogram);

/// Shannon entropy of each row's histogram, in bits; -0 for a histogram without bins.
///
///   histogram  [0..k-1][0..nbins-1]  in: relative frequencies; those not above 0 are skipped
///   entropy    [0..k-1]              out
void histogramEntropy(const float* const* histogram, int k, int nbins, float* entropy);

} // namespace zn
