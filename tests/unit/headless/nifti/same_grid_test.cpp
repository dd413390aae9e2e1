#include "headless/nifti/same_grid.h"

#include "headless/failure/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

ImageHeader grid(std::array<int, 3> size, double edge, double shift) {
    ImageHeader header;
    header.file = "image.nii";
    header.size = size;
    header.affine = {{{edge, 0, 0, shift}, {0, edge, 0, 0}, {0, 0, edge, 0}}};
    return header;
}

TEST(SameGrid, ToleratesRoundingByOtherPrograms) {
    EXPECT_NO_THROW(requireSameGrid("mask", grid({64, 64, 40}, 3.0, -96.0), grid({64, 64, 40}, 3.0, -96.0)));
    EXPECT_NO_THROW(requireSameGrid("mask", grid({64, 64, 40}, 3.0001, -96.0), grid({64, 64, 40}, 3.0, -96.01)));
}

TEST(SameGrid, RefusesAnythingElse) {
    const ImageHeader reference = grid({64, 64, 40}, 3.0, -96.0);
    EXPECT_THROW(requireSameGrid("mask", grid({64, 64, 41}, 3.0, -96.0), reference), Failure);
    EXPECT_THROW(requireSameGrid("mask", grid({64, 64, 40}, 3.0, -95.0), reference), Failure);
    // A small difference in the voxel size adds up to 0.63 mm at the far corner.
    EXPECT_THROW(requireSameGrid("mask", grid({64, 64, 40}, 3.01, -96.0), reference), Failure);
    EXPECT_THROW(requireSameGrid("mask", grid({64, 64, 40}, NAN, -96.0), reference), Failure);
}

} // namespace
} // namespace zn::test
