// Fuzz target: the record of a run in a study, from which the overview is made.

#include "attack/fuzz/input.h"

#include "headless/study/overview_runs.h"
#include "headless/study/runs_table.h"

#include <filesystem>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = zn::test::inputFile("record.json", zn::test::textInput(data, size));
    const auto study = input.parent_path() / "study";
    std::filesystem::create_directories(study / "logs");
    std::filesystem::copy_file(input, study / "logs/sub-01_task-rest.json",
                               std::filesystem::copy_options::overwrite_existing);
    zn::test::mayRefuse([&] {
        const auto runs = zn::headless::readOverviewRuns(study);
        zn::test::require(runs.size() == 1, "each record is one run");
        zn::test::require(!zn::headless::runsTable(runs).empty(), "the table has a header");
    });
    return 0;
}
