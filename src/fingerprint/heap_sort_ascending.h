#pragma once

namespace zn {

/// Sorts a vector in place, smallest value first.
///
///   n                 number of values; fewer than two are left as they are
///   values  [1..n]    in: any order; out: ascending
///
/// NaNs are safe, but leave the order of the other values undefined. O(n log n).
///
/// Many values that have only one ascending order are sorted by their digits instead, in O(n) and to the same bytes,
/// with memory for n more values; fails then as `vector` does.
/// Method: bottom-up heap sort, Wegener (1993), Theoretical Computer Science 118(1), 81-98, on a heap whose nodes have
/// four children each: half the levels of a binary heap, and the children of a node lie side by side.
void heapSortAscending(int n, float* values);

} // namespace zn
