#pragma once

namespace zn {

/// Sorts a vector without comparisons, smallest value first, if all values can be told apart by their order.
///
///   n                 number of values, at least 1
///   values  [1..n]    in: any order; out: ascending, or as they were
///
/// False, and nothing is moved, when a value is NaN or zeros of both signs occur: for these only the algorithm that
/// compares decides which comes first. Equal values are otherwise the same bits, so every correct sort gives the same
/// vector. O(n); needs memory for n more values.
/// Method: radix sort from the least significant digit, Knuth, The Art of Computer Programming, vol. 3, section 5.2.5.
bool sortByDigits(int n, float* values);

} // namespace zn
