#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zn::headless {

/// The known word that somebody who typed `word` most likely meant: the only one that begins with it, one that it
/// begins with, otherwise the one with the fewest insertions, deletions, replacements and swaps of neighbours (optimal
/// string alignment, Damerau 1964), as long as these are at most a third of its length. Leading dashes do not count.
/// Empty when nothing is similar.
std::string nearestWord(std::string_view word, const std::vector<std::string>& known);

} // namespace zn::headless
