#include "headless/cli/nearest_word.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr std::size_t kShortestBeginning = 2; // letters; a shorter one begins too many words

// Whether one of the two begins with the other: "--comp" and "--output" for "--components" and "--out".
bool oneBeginsTheOther(std::string_view a, std::string_view b) {
    const auto letters = [](std::string_view text) {
        return text.size() - std::min(text.find_first_not_of('-'), text.size());
    };
    return std::min(letters(a), letters(b)) >= kShortestBeginning && (a.starts_with(b) || b.starts_with(a));
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
    std::string nearest;
    std::size_t smallest = 0;
    for (const std::string& candidate : known) {
        const bool begins = oneBeginsTheOther(word, candidate);
        const std::size_t far = begins ? 0 : distance(word, candidate);
        if (!begins && 3 * far > candidate.size()) continue;
        if (!nearest.empty() && far >= smallest) continue;
        nearest = candidate;
        smallest = far;
    }
    return nearest;
}

} // namespace zn::headless
