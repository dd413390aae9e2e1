// Fuzz target: a design matrix, in any format, for an image of three volumes of which the first is omitted or not.

#include "attack/fuzz/input.h"

#include "headless/design/read_design.h"
#include "headless/result/course_tables.h"
#include "headless/text/text_lines.h"

#include <cmath>

namespace {

using namespace zn::headless;
using zn::test::require;

// What is written to a result must be a table, whatever the names are.
void requireWholeTable(const DesignMatrix& design) {
    const auto file = zn::test::inputFile("written.tsv", "");
    writeDesignTable(file, design);
    const auto lines = readLines(file);
    require(lines.size() == design.predictors.front().size() + 1, "a table has one row per volume");
    for (const std::string& line : lines) {
        require(splitAtTabs(line).size() == design.names.size(), "a row has one cell per predictor");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = zn::test::inputFile("design.tsv", zn::test::textInput(data, size));
    zn::test::mayRefuse([&] {
        const int omitted = size > 0 ? data[0] % 2 : 0;
        const DesignMatrix design = readDesign(file, {3, omitted, 2.0}).matrix;
        for (const auto& predictor : design.predictors) {
            for (const float value : predictor) require(std::isfinite(value), "a predictor is finite");
        }
        requireWholeTable(design);
    });
    return 0;
}
