#pragma once

#include <string>
#include <vector>

namespace zn::headless {

/// "a, b, c"; of more than ten words the first nine and "and 91 others".
inline std::string wordList(const std::vector<std::string>& words) {
    constexpr std::size_t kMost = 10;
    const std::size_t shown = words.size() > kMost ? kMost - 1 : words.size();
    std::string text;
    for (std::size_t i = 0; i < shown; ++i) text += (i == 0 ? "" : ", ") + words[i];
    if (shown < words.size()) text += " and " + std::to_string(words.size() - shown) + " others";
    return text;
}

} // namespace zn::headless
