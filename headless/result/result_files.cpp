#include "headless/result/result_files.h"

#include "headless/failure/failure.h"
#include "headless/result/result_names.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

namespace zn::headless {

namespace fs = std::filesystem;

namespace {

constexpr std::array kList = {
#define ZN_RESULT_FILE(identifier, name, place, ignored) ResultFileEntry{name, ResultPlace::place, ignored},
#include "headless/result/result_files.def"
#undef ZN_RESULT_FILE
};

// A result that the user names; every command that reads one begins here.
void requireFolder(const fs::path& folder) {
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (!fs::exists(status)) refuseFile(folder, "does not exist.");
    if (!fs::is_directory(status)) refuseFile(folder, "is not a folder.");
}

std::ptrdiff_t resultsIn(const fs::path& folder) {
    const std::string_view ending = nameOf(ResultFile::kComponents);
    std::error_code error;
    return std::count_if(fs::directory_iterator(folder, error), fs::directory_iterator(),
                         [&](const auto& file) { return file.path().string().ends_with(ending); });
}

// "sub-01" in "sub-01_ses-a_task-rest"; empty without the entity, which is followed by another one.
std::string entityIn(const std::string& stem, const std::string& entity) {
    const std::size_t begin = stem.starts_with(entity) ? 0 : stem.find("_" + entity) + 1;
    if (begin == 0 && !stem.starts_with(entity)) return "";
    return stem.substr(begin, stem.find('_', begin) - begin);
}

// Where znica bids puts the result of an image.
fs::path placeInStudy(const fs::path& image, const fs::path& study) {
    const std::string stem = resultStem(image);
    return study / entityIn(stem, "sub-") / entityIn(stem, "ses-") / "func";
}

} // namespace

std::string ResultFileEntry::in(const std::string& stem) const {
    const bool follows = name.starts_with('_') || place == ResultPlace::kPluginImage;
    return (follows ? stem : "") + std::string(name);
}

bool ResultFileEntry::isOfRun() const {
    constexpr std::array places = {ResultPlace::kRun, ResultPlace::kRunAndSample, ResultPlace::kRunAndDenoised,
                                   ResultPlace::kRunSampleAndDenoised};
    return std::find(places.begin(), places.end(), place) != places.end();
}

std::span<const ResultFileEntry> resultFileList() {
    return kList;
}

std::string_view nameOf(ResultFile file) {
    return kList[static_cast<std::size_t>(file)].name;
}

std::string ignoredNames(std::initializer_list<ResultPlace> places) {
    std::string text;
    std::string_view last;
    for (const ResultFileEntry& entry : kList) {
        if (std::find(places.begin(), places.end(), entry.place) == places.end()) continue;
        if (!entry.ignored.empty() && entry.ignored != last) text += std::string(entry.ignored) + "\n";
        last = entry.ignored;
    }
    return text;
}

ResultFiles::ResultFiles(fs::path folder, std::string stem) : folder_(std::move(folder)), stem_(std::move(stem)) {}

ResultFiles ResultFiles::in(const fs::path& folder, ResultFile key) {
    requireFolder(folder);
    const std::string_view ending = nameOf(key);
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(ending)) return {folder, name.substr(0, name.size() - ending.size())};
    }
    const char* command = key == ResultFile::kComponents ? "znica run" : "znica simulate";
    throw Failure(ExitStatus::kInput, folder.string() + " has no file that ends in " + std::string(ending) +
                                          "; name a folder created by " + command + ".");
}

ResultFiles ResultFiles::of(const fs::path& image, const fs::path& folder) {
    ResultFiles named(placeInStudy(image, folder), resultStem(image));
    if (named.has(ResultFile::kComponents)) return named;
    ResultFiles first = in(folder);
    const std::ptrdiff_t results = resultsIn(folder);
    if (results < 2) return first;
    named = ResultFiles(folder, resultStem(image));
    if (named.has(ResultFile::kComponents)) return named;
    throw Failure(ExitStatus::kInput, folder.string() + " holds the results of " + std::to_string(results) +
                                          " runs, but none named " + named.stem() + " after " +
                                          image.filename().string() + "; give the image the name of its run.");
}

fs::path ResultFiles::operator[](ResultFile file) const {
    return folder_ / kList[static_cast<std::size_t>(file)].in(stem_);
}

bool ResultFiles::has(ResultFile file) const {
    std::error_code error;
    return fs::exists((*this)[file], error);
}

void ResultFiles::requireShortNames(ResultPlace kind) const {
    for (const ResultFileEntry& entry : kList) {
        if ((entry.place == ResultPlace::kDenoised) != (kind == ResultPlace::kDenoised)) continue;
        std::error_code error;
        const std::string name = entry.in(stem_);
        (void)fs::symlink_status(folder_ / name, error);
        if (error != std::errc::filename_too_long) continue;
        throw Failure(ExitStatus::kInput, "the image's name is too long: the result would hold " + name + " (" +
                                              std::to_string(name.size()) + " bytes); use a shorter name.");
    }
}

std::string ResultFiles::text(ResultFile file) const {
    return readWholeFile((*this)[file]);
}

std::string ResultFiles::textIfAny(ResultFile file) const {
    return has(file) ? text(file) : std::string();
}

} // namespace zn::headless
