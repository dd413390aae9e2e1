#include "headless/denoise/foreign_image.h"

#include "headless/bids/bids_name.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zn::headless {

namespace {

constexpr std::array<std::string_view, 7> kOfTheAcquisition = {"sub", "ses", "task", "run", "acq", "dir", "echo"};

// Indices are the same with and without leading zeros.
std::string comparable(std::string_view entity, std::string label) {
    if (entity == "run" || entity == "echo") label.erase(0, label.find_first_not_of('0'));
    return label;
}

void append(std::string& list, std::string_view entity, const std::string& label) {
    list += (list.empty() ? "" : ", ") + std::string(entity) + "-" + label;
}

} // namespace

std::string noteOnForeignImage(const std::filesystem::path& image, const std::string& stem) {
    const std::string name = image.filename().string();
    const auto ofImage = parseBidsName(name);
    const auto ofResult = parseBidsName(stem + "_bold.nii.gz");
    if (!ofImage || !ofResult) return "";
    std::string here;
    std::string there;
    for (const std::string_view entity : kOfTheAcquisition) {
        const auto mine = ofImage->label(entity);
        const auto others = ofResult->label(entity);
        if (!mine || !others || comparable(entity, *mine) == comparable(entity, *others)) continue;
        append(here, entity, *mine);
        append(there, entity, *others);
    }
    if (here.empty()) return "";
    return "Image: " + name + " is named " + here + ", but the result " + there + "; check that they belong together.";
}

} // namespace zn::headless
