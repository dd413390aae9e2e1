#include "headless/events/events_beside_image.h"

#include "headless/failure/failure.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 7> kOfImagesOnly = {"space-", "res-",  "den-", "desc-",
                                                           "echo-",  "part-", "hemi-"};

// "sub-01_task-rest_desc-preproc": the stem of an image without the suffix that says what it is.
std::string entitiesOf(std::string stem) {
    for (const std::string_view suffix : {"_bold", "_cbv", "_phase"}) {
        if (stem.size() > suffix.size() && stem.ends_with(suffix)) return stem.erase(stem.size() - suffix.size());
    }
    return stem;
}

std::string withoutImageEntities(const std::string& entities) {
    std::string kept;
    for (std::size_t start = 0; start < entities.size();) {
        const std::size_t end = std::min(entities.find('_', start), entities.size());
        const std::string entity = entities.substr(start, end - start);
        const bool left = std::any_of(kOfImagesOnly.begin(), kOfImagesOnly.end(),
                                      [&](std::string_view name) { return entity.starts_with(name); });
        if (!left) kept += (kept.empty() ? "" : "_") + entity;
        start = end + 1;
    }
    return kept;
}

} // namespace

fs::path eventsBesideImage(const fs::path& image, const std::string& stem) {
    const std::string entities = entitiesOf(stem);
    const fs::path own = image.parent_path() / (entities + "_events.tsv");
    const fs::path common = image.parent_path() / (withoutImageEntities(entities) + "_events.tsv");
    std::error_code error;
    for (const fs::path& file : {own, common}) {
        if (fs::exists(fs::symlink_status(file, error))) return file;
    }
    throw Failure(ExitStatus::kInput, "--design auto needs " + common.string() +
                                          ", which does not exist; name a file, or leave out --design.");
}

} // namespace zn::headless
