#include "headless/bids/sidecars.h"

#include "headless/bids/bids_name.h"

#include <algorithm>
#include <string>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

struct Sidecar {
    fs::path file;
    std::size_t entities;
};

std::vector<fs::path> applicableIn(const fs::path& folder, const BidsName& image) {
    std::vector<Sidecar> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string file = entry->path().filename().string();
        if (!file.ends_with(".json")) continue;
        const auto name = parseBidsName(file);
        if (!name || name->extension != ".json" || name->suffix != image.suffix || !appliesTo(*name, image)) continue;
        found.push_back({entry->path(), name->entities.size()});
    }
    std::sort(found.begin(), found.end(), [](const Sidecar& a, const Sidecar& b) {
        return a.entities != b.entities ? a.entities > b.entities : a.file < b.file;
    });
    std::vector<fs::path> files;
    files.reserve(found.size());
    for (Sidecar& sidecar : found) files.push_back(std::move(sidecar.file));
    return files;
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

std::vector<fs::path> sidecarsOf(const fs::path& image) {
    const auto name = parseBidsName(image.filename().string());
    const auto subject = name ? name->label("sub") : std::nullopt;
    if (!subject) return {};
    std::vector<fs::path> files;
    std::error_code error;
    const fs::path absolute = fs::absolute(image, error);
    for (const fs::path& folder : foldersAbove(error ? image : absolute, *subject)) {
        for (fs::path& file : applicableIn(folder, *name)) files.push_back(std::move(file));
    }
    return files;
}

} // namespace zn::headless
