#include "headless/text/text_lines.h"

#include "headless/failure/failure.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace zn::headless {

namespace {

std::string readText(const std::filesystem::path& file) {
    std::string text = readWholeFile(file);
    if (text.find('\0') != std::string::npos) refuseFile(file, "is not a text file.");
    if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
    if (text.empty()) refuseFile(file, "is empty.");
    return text;
}

[[noreturn]] void refuse(std::string_view text, const std::string& where) {
    throw Failure(ExitStatus::kInput, where + " holds \"" + std::string(text) + "\" where a number is expected.");
}

} // namespace

std::vector<std::string> readLines(const std::filesystem::path& file) {
    const std::string text = readText(file);
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string line = text.substr(start, end - start);
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(std::move(line));
        start = end + 1;
    }
    return lines;
}

std::vector<std::string_view> splitAtTabs(std::string_view line) {
    std::vector<std::string_view> cells;
    while (true) {
        const std::size_t tab = line.find('\t');
        cells.push_back(line.substr(0, tab));
        if (tab == std::string_view::npos) return cells;
        line.remove_prefix(tab + 1);
    }
}

std::vector<std::string_view> splitAtBlanks(std::string_view line) {
    std::vector<std::string_view> words;
    while (true) {
        const std::size_t start = line.find_first_not_of(" \t");
        if (start == std::string_view::npos) return words;
        line.remove_prefix(start);
        const std::size_t length = std::min(line.find_first_of(" \t"), line.size());
        words.push_back(line.substr(0, length));
        line.remove_prefix(length);
    }
}

double doubleIn(std::string_view text, const std::string& where) {
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) refuse(text, where);
    return number;
}

float numberIn(std::string_view text, const std::string& where) {
    const double number = doubleIn(text, where); // numbers too small for single precision become 0
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max())) refuse(text, where);
    return static_cast<float>(number);
}

} // namespace zn::headless
