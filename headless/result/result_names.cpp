#include "headless/result/result_names.h"

#include <algorithm>
#include <cctype>

namespace zn::headless {

namespace {

bool endsWith(std::string_view name, std::string_view lowerCaseEnding) {
    if (name.size() < lowerCaseEnding.size()) return false;
    return std::equal(lowerCaseEnding.begin(), lowerCaseEnding.end(), name.end() - lowerCaseEnding.size(),
                      [](char wanted, char c) { return wanted == std::tolower(static_cast<unsigned char>(c)); });
}

} // namespace

std::string imageStem(const std::filesystem::path& image) {
    std::string name = image.filename().string();
    for (const std::string_view ending : {".gz", ".nii", ".hdr", ".img"}) {
        if (name.size() > ending.size() && endsWith(name, ending)) name.resize(name.size() - ending.size());
    }
    return name;
}

std::string resultStem(const std::filesystem::path& image) {
    std::string stem = imageStem(image);
    constexpr std::string_view kSuffix = "_bold";
    if (stem.size() > kSuffix.size() && stem.ends_with(kSuffix)) stem.resize(stem.size() - kSuffix.size());
    const std::size_t description = stem.find("_desc-");
    if (description != std::string::npos && description > 0) {
        const std::size_t next = stem.find('_', description + 1);
        stem.erase(description, next == std::string::npos ? next : next - description);
    }
    return stem;
}

std::string componentName(int index) {
    return (index < 10 ? "ICA_0" : "ICA_") + std::to_string(index);
}

} // namespace zn::headless
