#pragma once

namespace zn {

/// Finds the region of interest that correlates most strongly with each component's map, of either sign.
///
///   maps             [0..k-1][0..v-1]  in: component maps
///   templates        [0..m-1][0..v-1]  in: 1 inside the region, 0 outside; may be null when m is 0
///   m                                  number of regions
///   bestCorrelation  [0..k-1]          out: largest |correlation|, 0 without a match
///   bestIndex        [0..k-1]          out: number of that region, counted from 1; the lower one of two equal ones;
///                                      0 without a match
void matchTemplates(const float* const* maps, const float* const* templates, int m, int v, int k,
                    float* bestCorrelation, float* bestIndex);

} // namespace zn
