#include "headless/cli/nearest_word.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr std::size_t kShortestBeginning = 2; // letters; a shorter one begins too many words

// Without the dashes of an option, which all of them share.
std::string_view letters(std::string_view word) {
    return word.substr(std::min(word.find_first_not_of('-'), word.size()));
}

// Whether the word is the known one with something appended: "output" or "tr-seconds", but not "transform" for "tr".
bool isExtended(std::string_view word, std::string_view known) {
    if (!word.starts_with(known)) return false;
    return known.size() > kShortestBeginning || word.substr(known.size()).starts_with('-');
}

// The only candidate that begins with the word; empty when several do: each would be a guess.
std::string completion(std::string_view word, const std::vector<std::string>& known) {
    if (word.size() < kShortestBeginning) return "";
    const auto begins = [&](const std::string& candidate) { return letters(candidate).starts_with(word); };
    const auto first = std::find_if(known.begin(), known.end(), begins);
    if (first == known.end() || std::any_of(first + 1, known.end(), begins)) return "";
    return *first;
}

std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::vector<std::size_t>> d(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) {
        for (std::size_t j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                d[i][j] = i + j;
                continue;
            }
            const bool same = a[i - 1] == b[j - 1];
            d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + (same ? 0 : 1)});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped) d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
        }
    }
    return d.back().back();
}

} // namespace

std::string nearestWord(std::string_view word, const std::vector<std::string>& known) {
    word = letters(word);
    std::string nearest = completion(word, known);
    if (!nearest.empty()) return nearest;
    std::size_t smallest = 0;
    for (const std::string& candidate : known) {
        const std::string_view name = letters(candidate);
        const bool extended = isExtended(word, name);
        const std::size_t far = extended ? 0 : distance(word, name);
        if (!extended && 3 * far > name.size()) continue;
        if (!nearest.empty() && far >= smallest) continue;
        nearest = candidate;
        smallest = far;
    }
    return nearest;
}

} // namespace zn::headless
