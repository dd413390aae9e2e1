#include "headless/denoise/evidence_table.h"

#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

void writeEvidenceTable(const std::filesystem::path& table, const std::filesystem::path& description,
                        const std::vector<EvidenceColumn>& columns) {
    std::string text;
    nlohmann::ordered_json meaning;
    for (const EvidenceColumn& column : columns) {
        text += (&column == &columns.front() ? "" : "\t") + column.name;
        meaning[column.name]["Description"] = column.description;
        if (!column.units.empty()) meaning[column.name]["Units"] = column.units;
    }
    text += '\n';
    const std::size_t rows = columns.front().cells.size();
    for (std::size_t row = 0; row < rows; ++row) {
        const char* separator = "";
        for (const EvidenceColumn& column : columns) {
            text += separator + column.cells[row];
            separator = "\t";
        }
        text += '\n';
    }
    writeTextFile(table, text);
    writeTextFile(description, meaning.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
}

std::string cellOf(double value) {
    return cellText(static_cast<float>(value));
}

} // namespace zn::headless
