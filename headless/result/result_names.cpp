#include "headless/result/result_names.h"

namespace zn {

std::string imageStem(const std::filesystem::path& image) {
    std::string name = image.filename().string();
    for (const char* ending : {".gz", ".nii", ".hdr", ".img"}) {
        const std::string_view text(ending);
        if (name.size() > text.size() && name.ends_with(text)) name.resize(name.size() - text.size());
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

} // namespace zn
