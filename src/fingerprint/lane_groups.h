#pragma once

#include <type_traits>

namespace zn {

/// Rows that are processed side by side. A sum in index order is one long chain of dependent additions; eight
/// independent chains at a time hide their latency while the order within each row stays the same.
constexpr int kRowsPerGroup = 8;

/// Calls walk(lanes, first) for the rows first .. first + lanes - 1, from row 0 to row `rows` - 1: groups of
/// kRowsPerGroup rows, then single rows. `lanes` is a std::integral_constant, so that its value can size an array.
template <class Walk> void forLaneGroups(int rows, Walk walk) {
    int first = 0;
    for (; first + kRowsPerGroup <= rows; first += kRowsPerGroup)
        walk(std::integral_constant<int, kRowsPerGroup>(), first);
    for (; first < rows; ++first) walk(std::integral_constant<int, 1>(), first);
}

} // namespace zn
