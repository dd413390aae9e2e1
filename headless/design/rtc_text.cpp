#include "headless/design/rtc_text.h"

#include "headless/text/input_file.h"
#include "headless/text/text_lines.h"

#include <charconv>

namespace zn::headless {

namespace {

// The count after a label such as "NrOfPredictors:" in the lines above the empty one.
std::size_t countAfter(const std::string& label, const std::vector<std::string>& lines, std::size_t headerEnd,
                       const std::string& file) {
    for (std::size_t i = 0; i < headerEnd; ++i) {
        if (!lines[i].starts_with(label)) continue;
        const auto words = splitAtBlanks(std::string_view(lines[i]).substr(label.size()));
        std::size_t count = 0;
        if (words.size() == 1) std::from_chars(words[0].data(), words[0].data() + words[0].size(), count);
        if (count > 0) return count;
        refuseFile(file, "has no count above 0 after \"" + label + "\".");
    }
    refuseFile(file, "lacks the line \"" + label + "\".");
}

std::vector<std::string> quotedNames(std::string_view line, const std::string& file) {
    std::vector<std::string> names;
    for (std::size_t open = line.find('"'); open != std::string_view::npos; open = line.find('"')) {
        const std::size_t close = line.find('"', open + 1);
        if (close == std::string_view::npos) refuseFile(file, "has a predictor name without a closing double quote.");
        names.emplace_back(line.substr(open + 1, close - open - 1));
        line.remove_prefix(close + 1);
    }
    return names;
}

} // namespace

bool isRtc(const std::vector<std::string>& lines) {
    return !lines.empty() && lines.front().starts_with("FileVersion:");
}

DesignMatrix parseRtc(const std::vector<std::string>& lines, const std::string& file) {
    std::size_t line = 0;
    while (line < lines.size() && !splitAtBlanks(lines[line]).empty()) ++line;
    const std::size_t predictors = countAfter("NrOfPredictors:", lines, line, file);
    const std::size_t points = countAfter("NrOfDataPoints:", lines, line, file);
    while (line < lines.size() && splitAtBlanks(lines[line]).empty()) ++line;

    DesignMatrix design;
    if (line < lines.size()) design.names = quotedNames(lines[line++], file);
    if (design.names.size() != predictors) {
        refuseFile(file, "names " + std::to_string(design.names.size()) +
                             " predictors in quotes, but its header says " + std::to_string(predictors) + ".");
    }
    design.predictors.resize(predictors);
    for (std::size_t t = 0; t < points; ++t, ++line) {
        const std::string where = file + ", line " + std::to_string(line + 1) + ",";
        if (line >= lines.size()) refuseFile(file, "ends before its " + std::to_string(points) + " rows of values.");
        const auto words = splitAtBlanks(lines[line]);
        if (words.size() != predictors) {
            refuseFile(where, "has " + std::to_string(words.size()) + " values for " + std::to_string(predictors) +
                                  " predictors.");
        }
        for (std::size_t p = 0; p < predictors; ++p) design.predictors[p].push_back(numberIn(words[p], where));
    }
    return design;
}

} // namespace zn::headless
