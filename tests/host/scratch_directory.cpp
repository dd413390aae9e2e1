#include "host/scratch_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <string_view>

namespace zn::test {

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
constexpr std::string_view kLineEnd = "\r\n";
#else
constexpr std::string_view kLineEnd = "\n";
#endif

} // namespace

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

std::string platformTextOf(const fs::path& file) {
    const std::string bytes = contentOf(file);
    std::string text;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = std::min(bytes.find(kLineEnd, begin), bytes.size());
        const std::string line = bytes.substr(begin, end - begin);
        EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << file << " has line ends of another platform";
        text += line;
        if (end < bytes.size()) text += '\n';
        begin = end + kLineEnd.size();
    }
    return text;
}

} // namespace zn::test
