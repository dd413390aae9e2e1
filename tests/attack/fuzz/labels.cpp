// Fuzz target: a table of labels for a result of four components.

#include "attack/fuzz/input.h"

#include "headless/denoise/verdicts.h"

namespace {

using namespace zn::headless;
using zn::test::require;

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = zn::test::inputFile("labels.tsv", zn::test::textInput(data, size));
    zn::test::mayRefuse([&] {
        const auto verdicts = readVerdicts(file, {"ICA_00", "ICA_01", "ICA_02", "ICA_03"});
        require(verdicts.size() == 4, "every component has a verdict");
        for (const Verdict& verdict : verdicts) {
            require(verdict.rejected == (verdict.label == "noise"), "noise is rejected, and nothing else");
        }
    });
    return 0;
}
