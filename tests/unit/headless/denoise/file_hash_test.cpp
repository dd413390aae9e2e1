#include "headless/denoise/file_hash.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <string>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// The examples of FIPS 180-4.
TEST(FileHash, IsTheSha256OfTheBytes) {
    const TemporaryFolder folder;
    writeFile(folder / "abc", "abc");
    EXPECT_EQ(fileHash(folder / "abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    writeFile(folder / "million", std::string(1000000, 'a'));
    EXPECT_EQ(fileHash(folder / "million"), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(FileHash, OfAMissingFileIsRefused) {
    const TemporaryFolder folder;
    EXPECT_THROW(fileHash(folder / "none"), Failure);
}

} // namespace
} // namespace zn::test
