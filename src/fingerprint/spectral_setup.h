#pragma once

namespace zn {

/// How the power spectrum of a run's time courses is estimated.
struct SpectralSetup {
    int segmentLength;       ///< volumes per segment; 0 with fewer than 5 volumes
    int overlap;             ///< volumes that neighbouring segments share, half a segment
    int transformLength;     ///< points of the Fourier transform: a power of two, at least 256
    int frequencyCount;      ///< columns of the spectrum, 0 to the Nyquist frequency
    float samplingFrequency; ///< Hz, from the repetition time in whole seconds: infinite below 1000 ms
};

/// Setup for time courses of `volumes` volumes, `trMs` milliseconds apart. Segments take 1 / 4.5 of the volumes; the
/// transform length is the power of two nearest to it on a logarithmic scale, so it may be shorter than a segment.
SpectralSetup spectralSetup(int volumes, int trMs);

/// Number of non-negative frequencies of a transform of `transformLength` points.
int frequencyCount(int transformLength);

} // namespace zn
