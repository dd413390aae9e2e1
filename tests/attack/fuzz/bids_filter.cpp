// Fuzz target: the filter file of `znica bids`.

#include "attack/fuzz/input.h"

#include "headless/bids/entity_filter.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = zn::test::inputFile("filter.json", zn::test::textInput(data, size));
    zn::test::mayRefuse([&] {
        zn::headless::EntityFilter filter;
        filter.addFile(file);
        (void)filter.passes(*zn::headless::parseBidsName("sub-01_ses-a_task-rest_run-02_bold.nii.gz"));
    });
    return 0;
}
