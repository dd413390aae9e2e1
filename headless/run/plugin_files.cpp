#include "headless/run/plugin_files.h"

#include "headless/failure/failure.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr std::array kFiles = {ResultFile::kPluginVoxels, ResultFile::kPluginCovariance, ResultFile::kPluginParameters,
                               ResultFile::kPluginTimeCourses, ResultFile::kPluginEigenvalues};

std::int64_t linesIn(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::array<char, 1 << 16> piece;
    std::int64_t lines = 0;
    while (stream) {
        stream.read(piece.data(), piece.size());
        lines += std::count(piece.data(), piece.data() + stream.gcount(), '\n');
    }
    if (stream.eof()) return lines;
    throw Failure(ExitStatus::kOther, file.string() + " cannot be read back; check its disk.");
}

[[noreturn]] void refuseIncomplete(const fs::path& file) {
    throw Failure(ExitStatus::kOther,
                  file.string() +
                      " was not written completely; check the free disk space and any limit on file sizes.");
}

void requireLines(const fs::path& file, std::int64_t wanted) {
    if (!fs::exists(file) || linesIn(file) != wanted) refuseIncomplete(file);
}

} // namespace

fs::path pluginFile(const Run& run, ResultFile file) {
    const ResultFileEntry& entry = resultFileList()[static_cast<std::size_t>(file)];
    return (*run.files)[ResultFile::kPluginFolder] / entry.in(fs::path(run.session.dialog.texts[0]).stem().string());
}

void requireCompletePluginFiles(const Run& run) {
    const auto exists = [&](ResultFile file) { return fs::exists(pluginFile(run, file)); };
    if (std::none_of(kFiles.begin(), kFiles.end(), exists)) return;
    requireLines(pluginFile(run, ResultFile::kPluginVoxels), run.voxelsAnalysed() + 1);
    requireLines(pluginFile(run, ResultFile::kPluginCovariance), run.volumes);
    requireLines(pluginFile(run, ResultFile::kPluginParameters), run.componentsFound());
    requireLines(pluginFile(run, ResultFile::kPluginTimeCourses), run.volumes + 6);

    const fs::path eigenvalues = pluginFile(run, ResultFile::kPluginEigenvalues);
    const auto volumes = static_cast<std::uintmax_t>(run.volumes);
    std::error_code absent;
    const std::uintmax_t length = fs::file_size(eigenvalues, absent);
    if (absent || length != sizeof(double) * (volumes + volumes * volumes)) refuseIncomplete(eigenvalues);
}

} // namespace zn::headless
