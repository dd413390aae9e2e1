// Fuzz target: the component maps of a result, compared with those of another.

#include "attack/fuzz/input.h"

#include "cli/nifti_bytes.h"

#include "headless/result/component_pairs.h"

#include <cmath>

namespace {

// Two maps of 3 x 2 x 2 voxels.
std::string otherMaps() {
    zn::test::NiftiBytes image;
    image.dim = {4, 3, 2, 2, 2, 1, 1, 1};
    image.dataType = 16;
    image.bitsPerVoxel = 32;
    for (int i = 0; i < 24; ++i) image.append(static_cast<float>(i * i % 7) - 2.5f);
    return image.bytes();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto other = zn::test::inputFile("b/x_desc-ICA_components.nii.gz", otherMaps());
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto maps = zn::test::inputFile("a/x_desc-ICA_components.nii.gz", bytes);
    zn::test::mayRefuse([&] {
        for (const auto& pair : zn::headless::pairComponents(maps.parent_path(), other.parent_path())) {
            zn::test::require(std::fabs(pair.r) <= 1.0, "a correlation is a number up to 1");
        }
    });
    return 0;
}
