#include "headless/report/run_files.h"

#include "headless/failure/failure.h"
#include "headless/text/input_file.h"

#include <string_view>
#include <system_error>

namespace zn::headless {

namespace fs = std::filesystem;

RunFiles::RunFiles(const fs::path& folder) : folder_(folder) {
    constexpr std::string_view kComponents = "_desc-ICA_components.nii.gz";
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(kComponents)) stem_ = name.substr(0, name.size() - kComponents.size());
    }
    if (!stem_.empty()) return;
    throw Failure(ExitStatus::kInput, folder.string() + " holds no result of znica run (no file that ends in " +
                                          std::string(kComponents) + "); check the folder.");
}

bool RunFiles::has(const std::string& ending) const {
    std::error_code error;
    return fs::exists((*this)(ending), error);
}

std::string RunFiles::text(const std::string& ending) const {
    return readWholeFile((*this)(ending));
}

std::string RunFiles::textIfAny(const std::string& ending) const {
    return has(ending) ? text(ending) : std::string();
}

} // namespace zn::headless
