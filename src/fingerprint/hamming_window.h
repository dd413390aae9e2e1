#pragma once

namespace zn {

/// The symmetric Hamming window 0.54 - 0.46 cos(2 pi i / (length - 1)).
///
///   window  [0..length-1]  out; a window of one value is NaN (0 / 0)
void hammingWindow(int length, float* window);

} // namespace zn
