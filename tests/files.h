#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zn::test {

/// A temporary folder for one test, removed at the end of the test.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

void writeFile(const std::filesystem::path& file, std::string_view bytes);
/// The same, compressed in the gzip format.
void writeCompressed(const std::filesystem::path& file, std::string_view bytes);
std::string textOf(const std::filesystem::path& file);
/// Names in a folder, sorted, including hidden ones.
std::vector<std::string> namesIn(const std::filesystem::path& folder);
/// The cells of a tab-separated table, [line][cell].
std::vector<std::vector<std::string>> tableIn(const std::filesystem::path& file);

} // namespace zn::test
