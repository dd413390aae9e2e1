#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zn::headless {

/// The known word that somebody who typed `word` most likely meant: one that begins with it or that it begins with,
/// otherwise the one with the fewest insertions, deletions, replacements and swaps of neighbours (optimal string
/// alignment, Damerau 1964), as long as these are at most a third of its length. Empty when there is none.
std::string nearestWord(std::string_view word, const std::vector<std::string>& known);

} // namespace zn::headless
