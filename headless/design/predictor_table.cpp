#include "headless/design/predictor_table.h"

#include "headless/failure/failure.h"
#include "headless/text/text_lines.h"

namespace zn::headless {

namespace {

bool isNumber(std::string_view text) {
    try {
        numberIn(text, "");
        return true;
    } catch (const Failure&) {
        return false;
    }
}

DesignMatrix namesFrom(const std::string& header, const std::string& file) {
    DesignMatrix design;
    for (const auto cell : splitAtTabs(header)) design.names.emplace_back(cell);
    for (const auto& name : design.names) {
        if (isNumber(name)) {
            throw Failure(ExitStatus::kInput, file + " begins with numbers; its first line must name the predictors.");
        }
    }
    design.predictors.resize(design.names.size());
    return design;
}

} // namespace

DesignMatrix parsePredictorTable(const std::vector<std::string>& lines, const std::string& file) {
    std::size_t end = lines.size();
    while (end > 1 && splitAtBlanks(lines[end - 1]).empty()) --end;
    DesignMatrix design = namesFrom(lines.front(), file);
    for (std::size_t line = 1; line < end; ++line) {
        const std::string where = file + ", line " + std::to_string(line + 1);
        const auto cells = splitAtTabs(lines[line]);
        if (cells.size() != design.names.size()) {
            throw Failure(ExitStatus::kInput, where + ", has " + std::to_string(cells.size()) +
                                                  " cells, but the header has " + std::to_string(design.names.size()) +
                                                  "; separate cells by tabs.");
        }
        for (std::size_t p = 0; p < cells.size(); ++p) {
            design.predictors[p].push_back(numberIn(cells[p], where + ", column \"" + design.names[p] + "\","));
        }
    }
    return design;
}

} // namespace zn::headless
