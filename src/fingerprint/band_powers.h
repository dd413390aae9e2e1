#pragma once

namespace zn {

inline constexpr int kBands = 5;

/// Share of each component's power in up to five frequency bands, whose inner edges lie at 0.032, 0.08, 0.2 and 0.4 of
/// the Nyquist frequency.
///
///   spectrum     [0..k-1][0..f-1]  in
///   f                              number of frequencies
///   frequencies  [0..f-1]          in: Hz
///   samplingFrequency              Hz
///   bands        [0..k-1][0..4]    out: a band's power divided by the power of all columns
///
/// A spectrum that ends above 0.1 Hz has five bands, one that reaches 0.05 Hz four, others three; the columns of
/// missing bands are left unchanged. An edge lies at the column nearest to it, the later one when two are equally near;
/// an edge that no frequency exceeds, or that is NaN, lies at the last column.
void bandPowerFractions(const float* const* spectrum, int k, int f, const float* frequencies, float samplingFrequency,
                        float** bands);

/// Divides each component's values by its largest, in place, and then each band's by the largest over all components.
///
///   bands   [0..k-1][0..4]  in: fractions, 0 for missing bands; out: divided by row maxima
///   output  [0..k-1][0..4]  out: divided by column maxima as well; NaN (0 / 0) for a band that is 0 in every component
void scaleBandsToUnitRange(float** bands, int k, float** output);

} // namespace zn
