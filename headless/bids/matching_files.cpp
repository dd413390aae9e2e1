#include "headless/bids/matching_files.h"

#include "headless/failure/failure.h"

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

struct Ending {
    const char* suffix;
    const char* extension;
};

fs::path onlyOne(const NamedFile& image, const BidsFolder& folder, BidsName wanted,
                 std::initializer_list<Ending> ends) {
    fs::path found;
    for (const Ending& ending : ends) {
        wanted.suffix = ending.suffix;
        wanted.extension = ending.extension;
        const fs::path file = folder.find(wanted);
        if (file.empty()) continue;
        if (!found.empty()) {
            throw Failure(ExitStatus::kInput, image.file.string() + " matches both " + found.filename().string() +
                                                  " and " + file.filename().string() + "; remove one of them.");
        }
        found = file;
    }
    return found;
}

} // namespace

fs::path maskOf(const NamedFile& image, const BidsFolder& folder) {
    BidsName wanted = image.name.without({"desc"});
    wanted.entities.emplace_back("desc", "brain");
    return onlyOne(image, folder, wanted, {{"mask", ".nii.gz"}, {"mask", ".nii"}});
}

fs::path confoundsOf(const NamedFile& image, const BidsFolder& folder) {
    BidsName wanted = image.name.without({"desc", "space", "res", "den"});
    wanted.entities.emplace_back("desc", "confounds");
    return onlyOne(image, folder, wanted, {{"timeseries", ".tsv"}, {"regressors", ".tsv"}});
}

fs::path eventsOf(const NamedFile& image, const BidsFolder& originals) {
    return onlyOne(image, originals, image.name.without({"desc", "space", "res", "den", "part"}), {{"events", ".tsv"}});
}

} // namespace zn::headless
