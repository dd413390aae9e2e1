#include "headless/nifti/quiet_library.h"

#include <sys/stat.h>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

namespace zn::test {

using namespace headless;

namespace {

ino_t fileOfStandardError() {
    struct stat file {};
    fstat(STDERR_FILENO, &file);
    return file.st_ino;
}

TEST(QuietLibrary, LeavesStandardErrorAsItWasWhenTwoThreadsUseIt) {
    const ino_t before = fileOfStandardError();
    const auto work = [] {
        for (int i = 0; i < 2000; ++i) const QuietLibrary quiet;
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(fileOfStandardError(), before);
}

} // namespace
} // namespace zn::test
