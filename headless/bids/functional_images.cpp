#include "headless/bids/functional_images.h"

namespace zn::headless {

namespace {

// Why an image with the suffix "bold" cannot be analysed; empty when it can.
std::string whyNot(const BidsName& name, const std::filesystem::path& folder) {
    const bool volume = name.extension == ".nii" || name.extension == ".nii.gz";
    if (!volume || name.label("hemi")) return "surfaces";
    if (name.label("echo")) return "single echoes, which have to be combined first";
    if (name.label("part").value_or("mag") != "mag") return "phase or complex parts";
    const auto subject = name.label("sub");
    const auto session = name.label("ses");
    std::filesystem::path wanted = "sub-" + subject.value_or("");
    if (session) wanted /= "ses-" + *session;
    const auto above = folder.parent_path();
    const bool there =
        above.filename() == wanted.filename() && (!session || above.parent_path().filename() == wanted.parent_path());
    return there ? "" : "named for another subject or session than their folder";
}

bool isForDisplay(const std::string& extension) {
    return extension == ".json" || extension == ".tsv" || extension == ".svg" || extension == ".html";
}

} // namespace

std::vector<NamedFile> functionalImages(const BidsFolder& folder, bool preprocessed, PassedOver& passedOver) {
    std::vector<NamedFile> images;
    for (const NamedFile& file : folder.files()) {
        if (file.name.suffix != "bold" || isForDisplay(file.name.extension)) continue;
        if (file.name.label("desc") != (preprocessed ? std::optional<std::string>("preproc") : std::nullopt)) continue;
        const std::string why = whyNot(file.name, file.file.parent_path());
        if (why.empty()) {
            images.push_back(file);
        } else {
            passedOver[why].push_back(file.file.filename().string());
        }
    }
    for (const std::string& name : folder.misnamed()) passedOver["names that are not BIDS"].push_back(name);
    return images;
}

std::string runName(const BidsName& image) {
    return image.without({"desc"}).entityText();
}

} // namespace zn::headless
