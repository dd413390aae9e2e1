#pragma once

#include <vector>

namespace zn::test {

/// The values in the order in which the bottom-up heap sort with four children per node leaves them, written out
/// literally: every pair compared, nothing sorted by digits. NaNs and zeros of both signs end up where its comparisons
/// put them.
std::vector<float> literalHeapSort(std::vector<float> heap);

} // namespace zn::test
