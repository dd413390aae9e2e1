// Fuzz target: a table of confounds for an image of four volumes.

#include "attack/fuzz/input.h"

#include "headless/confounds/confound_match.h"
#include "headless/confounds/confound_table.h"

#include <array>
#include <cmath>

namespace {

using namespace zn::headless;
using zn::test::require;

constexpr std::array kCourse = {0.1f, 0.9f, 0.2f, 0.4f};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = zn::test::inputFile("confounds.tsv", zn::test::textInput(data, size));
    zn::test::mayRefuse([&] {
        const Confounds confounds = readConfounds(file, {}, {4, 0, 2.0});
        for (const auto& values : confounds.values) require(values.size() == 4, "a confound has one value per volume");
        const auto strongest = strongestConfound(kCourse, confounds);
        require(!(std::fabs(strongest.r) > 1.0001f), "a correlation is at most 1");
    });
    return 0;
}
