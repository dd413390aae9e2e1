#include "headless/nifti/image_writer.h"

#include "files.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace zn::test {

using namespace headless;

namespace {

// An image may be written while another thread reports something. Whatever redirects a descriptor clears its flag.
TEST(ImageWriter, LeavesStandardErrorAlone) {
    const TemporaryFolder folder;
    const int before = fcntl(STDERR_FILENO, F_GETFD);
    ASSERT_EQ(fcntl(STDERR_FILENO, F_SETFD, FD_CLOEXEC), 0);
    ImageWriter writer(folder / "image.nii", *newGrid({4, 3, 2}, 2.0), {});
    EXPECT_EQ(fcntl(STDERR_FILENO, F_GETFD), FD_CLOEXEC);
    fcntl(STDERR_FILENO, F_SETFD, before);
}

} // namespace
} // namespace zn::test
