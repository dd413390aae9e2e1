#include "headless/bids/non_steady_state.h"

#include "headless/text/text_lines.h"
#include "headless/text/text_table.h"

namespace zn::headless {

int nonSteadyStateVolumes(const std::filesystem::path& confounds) {
    const TextTable table = parseTable(readLines(confounds), confounds.string());
    std::size_t volumes = 0;
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        if (!table.columns[column].starts_with("non_steady_state_outlier")) continue;
        for (std::size_t row = volumes; row < table.rows.size(); ++row) {
            if (!isMissing(table.rows[row][column]) && table.number(row, column) != 0.0) volumes = row + 1;
        }
    }
    return static_cast<int>(volumes);
}

} // namespace zn::headless
