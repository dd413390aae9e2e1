#include "host/scratch_directory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

namespace zn::testing {

namespace fs = std::filesystem;

ScratchDirectory::ScratchDirectory() : before_(fs::current_path()) {
    std::random_device random;
    do {
        path_ = fs::temp_directory_path() / ("znica-test-" + std::to_string(random()));
    } while (!fs::create_directory(path_));
    fs::current_path(path_);
}

ScratchDirectory::~ScratchDirectory() {
    std::error_code ignored;
    fs::current_path(before_, ignored);
    fs::remove_all(path_, ignored);
}

std::string contentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in) << file << " cannot be opened";
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace zn::testing
