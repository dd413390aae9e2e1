#include "files.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include <stdlib.h>
#include <zlib.h>

namespace zn::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "znica-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("mkdtemp");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void writeFile(const fs::path& file, std::string_view bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

void writeCompressed(const fs::path& file, std::string_view bytes) {
    const gzFile stream = gzopen(file.c_str(), "wb1");
    gzwrite(stream, bytes.data(), static_cast<unsigned>(bytes.size()));
    gzclose(stream);
}

std::string textOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::vector<std::string>> tableIn(const fs::path& file) {
    std::vector<std::vector<std::string>> table;
    std::istringstream lines(textOf(file));
    for (std::string line; std::getline(lines, line);) {
        table.emplace_back();
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, '\t');) table.back().push_back(cell);
    }
    return table;
}

} // namespace zn::test
