#include "headless/design/number_columns.h"

#include "headless/failure/failure.h"
#include "headless/text/text_lines.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace zn::headless {

namespace {

constexpr std::string_view kLabels = "ColumnLabels";
constexpr int kMostCopies = 1000; // of a number in one row; a design has far fewer columns

std::string_view withoutComment(std::string_view line) {
    return line.substr(0, std::min(line.find('#'), line.find("//")));
}

std::vector<std::string> wordsIn(std::string_view line) {
    std::string text(withoutComment(line));
    std::replace(text.begin(), text.end(), ',', ' ');
    std::vector<std::string> words;
    for (const std::string_view word : splitAtBlanks(text)) words.emplace_back(word);
    return words;
}

// "3@0": how often, and what.
struct Repeated {
    int count = 1;
    std::string_view number;
};

Repeated repeated(std::string_view word) {
    const std::size_t at = word.find('@');
    int count = 0;
    if (at == std::string_view::npos) return {1, word};
    const auto [end, error] = std::from_chars(word.data(), word.data() + at, count);
    const bool usable = error == std::errc() && end == word.data() + at && count >= 1 && count <= kMostCopies;
    return usable ? Repeated{count, word.substr(at + 1)} : Repeated{1, word};
}

// The labels of a comment such as '#  ColumnLabels = "Run#1Pol#0 ; Face#0"'.
std::vector<std::string> labelsIn(const std::vector<std::string>& lines) {
    std::vector<std::string> labels;
    for (const std::string& line : lines) {
        const std::size_t key = line.find(kLabels);
        if (!line.starts_with('#') || key == std::string::npos) continue;
        const std::size_t open = line.find('"', key);
        const std::size_t close = open == std::string::npos ? open : line.find('"', open + 1);
        if (close == std::string::npos) continue;
        std::string_view text = std::string_view(line).substr(open + 1, close - open - 1);
        while (true) {
            const std::size_t end = std::min(text.find(';'), text.size());
            const auto words = splitAtBlanks(text.substr(0, end));
            labels.emplace_back(words.empty() ? "" : words.front());
            if (end == text.size()) return labels;
            text.remove_prefix(end + 1);
        }
    }
    return labels;
}

std::vector<std::string> namesFor(std::size_t columns, const std::vector<std::string>& lines, const std::string& file) {
    auto labels = labelsIn(lines);
    if (labels.size() == columns) return labels;
    const std::string stem = std::filesystem::path(file).stem().string();
    if (columns == 1) return {stem};
    labels.clear();
    for (std::size_t c = 0; c < columns; ++c) labels.push_back(stem + "[" + std::to_string(c) + "]");
    return labels;
}

std::vector<float> rowOf(const std::vector<std::string>& words, const std::string& where) {
    std::vector<float> row;
    for (const std::string& word : words) {
        const auto [count, number] = repeated(word);
        row.insert(row.end(), static_cast<std::size_t>(count), numberIn(number, where));
    }
    return row;
}

} // namespace

bool isNumber(std::string_view text) {
    try {
        numberIn(text, "");
        return true;
    } catch (const Failure&) {
        return false;
    }
}

bool areNumberColumns(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const auto words = wordsIn(line);
        if (words.empty()) continue;
        return std::all_of(words.begin(), words.end(),
                           [](const std::string& word) { return isNumber(repeated(word).number); });
    }
    return false;
}

DesignMatrix parseNumberColumns(const std::vector<std::string>& lines, const std::string& file) {
    DesignMatrix design;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const auto words = wordsIn(lines[line]);
        if (words.empty()) continue;
        const std::string where = file + ", line " + std::to_string(line + 1) + ",";
        const auto row = rowOf(words, where);
        if (design.predictors.empty()) design.predictors.resize(row.size());
        if (row.size() != design.predictors.size()) {
            throw Failure(ExitStatus::kInput, where + " has " + std::to_string(row.size()) +
                                                  " numbers, but the rows before it have " +
                                                  std::to_string(design.predictors.size()) + ".");
        }
        for (std::size_t c = 0; c < row.size(); ++c) design.predictors[c].push_back(row[c]);
    }
    design.names = namesFor(design.predictors.size(), lines, file);
    return design;
}

} // namespace zn::headless
