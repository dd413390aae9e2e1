#include "headless/design/feat_matrix.h"

#include "headless/text/input_file.h"
#include "headless/text/text_lines.h"

#include <algorithm>
#include <charconv>

namespace zn::headless {

namespace {

// The number after a key such as "/NumWaves"; 0 when it is missing.
std::size_t countAfter(const std::string& key, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const auto words = splitAtBlanks(line);
        if (words.size() != 2 || words[0] != key) continue;
        std::size_t count = 0;
        const auto [end, error] = std::from_chars(words[1].data(), words[1].data() + words[1].size(), count);
        return error == std::errc() && end == words[1].data() + words[1].size() ? count : 0;
    }
    return 0;
}

bool isKey(const std::string& line, std::string_view key) {
    const auto words = splitAtBlanks(line);
    return !words.empty() && words.front() == key;
}

} // namespace

bool isFeatMatrix(const std::vector<std::string>& lines) {
    return std::any_of(lines.begin(), lines.begin() + std::min<std::ptrdiff_t>(20, std::ssize(lines)),
                       [](const std::string& line) { return isKey(line, "/NumWaves") || isKey(line, "/Matrix"); });
}

DesignMatrix parseFeatMatrix(const std::vector<std::string>& lines, const std::string& file) {
    const std::size_t waves = countAfter("/NumWaves", lines);
    const std::size_t points = countAfter("/NumPoints", lines);
    if (waves == 0 || points == 0) refuseFile(file, "lacks a count above 0 after \"/NumWaves\" or \"/NumPoints\".");
    const auto begin =
        std::find_if(lines.begin(), lines.end(), [](const auto& line) { return isKey(line, "/Matrix"); });
    if (begin == lines.end()) refuseFile(file, "lacks the line \"/Matrix\".");

    DesignMatrix design;
    for (std::size_t line = static_cast<std::size_t>(begin - lines.begin()) + 1; line < lines.size(); ++line) {
        const auto words = splitAtBlanks(lines[line]);
        if (words.empty()) continue;
        const std::string where = file + ", line " + std::to_string(line + 1) + ",";
        if (words.size() != waves) {
            refuseFile(where, "has " + std::to_string(words.size()) + " numbers, but /NumWaves is " +
                                  std::to_string(waves) + ".");
        }
        design.predictors.resize(waves);
        for (std::size_t p = 0; p < waves; ++p) design.predictors[p].push_back(numberIn(words[p], where));
    }
    const std::size_t rows = design.predictors.empty() ? 0 : design.predictors.front().size();
    if (rows != points) {
        refuseFile(file, "has " + std::to_string(rows) + " rows of numbers, but /NumPoints is " +
                             std::to_string(points) + ".");
    }
    for (std::size_t p = 1; p <= waves; ++p) design.names.push_back("EV" + std::to_string(p));
    return design;
}

} // namespace zn::headless
