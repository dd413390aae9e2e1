#pragma once

#include <vector>

namespace zn::headless {

/// Pairs rows with columns so that the sum of their values is as large as possible.
///
///   value    [row][column], rows * columns numbers, row after row, all finite
///   result   [row]: its column, counted from 0; -1 for the rows left without one when there are more rows than columns
///
/// Solves the assignment problem by shortest augmenting paths, O(min^2 max): Kuhn (1955), Naval Research Logistics
/// Quarterly 2, 83-97, in the form of Jonker and Volgenant (1987), Computing 38, 325-340.
std::vector<int> bestMatching(const std::vector<double>& value, int rows, int columns);

} // namespace zn::headless
