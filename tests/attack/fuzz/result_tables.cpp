// Fuzz target: the tables of a result of two components and three volumes, as the report reads them. An input is the
// metrics, the time courses and the design, separated by form feeds; what follows the first form feed may be missing.

#include "attack/fuzz/input.h"

#include "headless/report/whole_result.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto tables = zn::test::piecesOf(zn::test::textInput(data, size), '\f');
    const auto file = zn::test::inputFile("tables/x_desc-ICA_metrics.tsv", tables[0]);
    zn::test::inputFile("tables/x_desc-ICA_mixing.tsv", tables.size() > 1 ? tables[1] : "");
    if (tables.size() > 2) {
        zn::test::inputFile("tables/x_desc-ICA_design.tsv", tables[2]);
    } else {
        zn::test::removeInputFile("tables/x_desc-ICA_design.tsv");
    }
    const zn::headless::ResultFiles files(file.parent_path(), "x");
    zn::test::mayRefuse([&] { zn::headless::requireCompleteTables(files, 2, 3); });
    return 0;
}
