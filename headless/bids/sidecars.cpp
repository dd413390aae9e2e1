#include "headless/bids/sidecars.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// Of a folder that cannot be read: none.
std::vector<NamedFile> jsonFilesIn(const fs::path& folder) {
    std::vector<NamedFile> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string file = entry->path().filename().string();
        if (!file.ends_with(".json")) continue;
        auto name = parseBidsName(file);
        if (name && name->extension == ".json") found.push_back({entry->path(), std::move(*name)});
    }
    std::sort(found.begin(), found.end(), [](const NamedFile& a, const NamedFile& b) {
        const std::size_t more = a.name.entities.size();
        const std::size_t fewer = b.name.entities.size();
        return more != fewer ? more > fewer : a.file < b.file;
    });
    return found;
}

// The folders from the image's up to the one that holds the subject's folder; only the first without such a folder.
std::vector<fs::path> foldersAbove(const fs::path& image, const std::string& subject) {
    std::vector<fs::path> folders;
    for (fs::path folder = image.parent_path();; folder = folder.parent_path()) {
        folders.push_back(folder);
        const bool top = folder.filename() == "sub-" + subject;
        if (top) folders.push_back(folder.parent_path());
        if (top) return folders;
        if (!folder.has_relative_path()) return {image.parent_path()};
    }
}

} // namespace

const std::vector<NamedFile>& SidecarFolders::filesIn(const fs::path& folder) {
    const auto known = files_.find(folder);
    return known != files_.end() ? known->second : files_.emplace(folder, jsonFilesIn(folder)).first->second;
}

std::vector<fs::path> SidecarFolders::sidecarsOf(const fs::path& image) {
    const auto name = parseBidsName(image.filename().string());
    const auto subject = name ? name->label("sub") : std::nullopt;
    if (!subject) return {};
    std::vector<fs::path> files;
    std::error_code error;
    const fs::path absolute = fs::absolute(image, error);
    for (const fs::path& folder : foldersAbove(error ? image : absolute, *subject)) {
        for (const NamedFile& json : filesIn(folder)) {
            if (json.name.suffix == name->suffix && appliesTo(json.name, *name)) files.push_back(json.file);
        }
    }
    return files;
}

std::vector<fs::path> sidecarsOf(const fs::path& image) {
    return SidecarFolders().sidecarsOf(image);
}

} // namespace zn::headless
