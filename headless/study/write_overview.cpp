#include "headless/study/write_overview.h"

namespace zn::headless {

std::string writeOverview(const std::filesystem::path& folder) {
    return folder.string();
}

} // namespace zn::headless
