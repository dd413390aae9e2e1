#include "headless/cli/absolute_path.h"

#include <system_error>

namespace zn::headless {

std::filesystem::path absolutePath(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error).lexically_normal();
    if (error) return path;
    return absolute.has_filename() ? absolute : absolute.parent_path();
}

} // namespace zn::headless
