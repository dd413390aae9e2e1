#include "headless/design/predictor_table.h"

#include "headless/design/number_columns.h"
#include "headless/failure/failure.h"
#include "headless/text/text_lines.h"

namespace zn::headless {

DesignMatrix predictorTable(const TextTable& table) {
    DesignMatrix design;
    for (const std::string& name : table.columns) {
        if (isNumber(name)) {
            throw Failure(ExitStatus::kInput, table.file + " has the number " + name +
                                                  " in its first line, which must name the predictors.");
        }
        design.names.push_back(name);
    }
    design.predictors.resize(design.names.size());
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        for (std::size_t p = 0; p < design.names.size(); ++p) {
            design.predictors[p].push_back(numberIn(table.rows[row][p], table.place(row, p)));
        }
    }
    return design;
}

} // namespace zn::headless
