// Fuzz target: the table of the regions' names.

#include "attack/fuzz/input.h"

#include "headless/design/region_names.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = zn::test::inputFile("regions.tsv", zn::test::textInput(data, size));
    zn::test::mayRefuse([&] {
        for (const auto& [label, name] : zn::headless::readRegionNames(file)) {
            zn::test::require(name.find('\t') == std::string::npos, "a name is a cell");
        }
    });
    return 0;
}
