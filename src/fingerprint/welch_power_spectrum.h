#pragma once

namespace zn {

/// Power spectrum of each component's time course: the mean periodogram of overlapping windowed segments.
///
///   courses          [0..k-1][0..t-1]   in: standardised internally
///   transformLength                     points of the Fourier transform, a power of two
///   segmentLength                       volumes per segment; one longer than the transform is wrapped around
///   overlap                             volumes that neighbouring segments share
///   spectrum         [0..k-1][0..f-1]   out, f = frequencyCount(transformLength); inner frequencies not doubled
///   frequencies      [0..f-1]           out: Hz
///   samplingFrequency                   Hz
///
/// Volumes after the last whole segment are not used. Without any segment, and for a constant time course, the
/// spectrum is NaN. An infinite sampling frequency makes the frequencies infinite, the first one NaN.
/// Method: Welch (1967), IEEE Trans. Audio and Electroacoustics 15(2), 70-73; Hamming window, normalised by the sum
/// of its squares.
void welchPowerSpectrum(const float* const* courses, int k, int t, int transformLength, int segmentLength, int overlap,
                        float** spectrum, float* frequencies, float samplingFrequency);

} // namespace zn
