#include "headless/text/take_free_name.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>

namespace zn::headless {

std::error_code takeFreeName(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    std::error_code error(errno, std::generic_category());
    if (error != std::errc::invalid_argument && error != std::errc::function_not_supported) return error;
    if (std::filesystem::exists(std::filesystem::symlink_status(to))) {
        return std::make_error_code(std::errc::file_exists);
    }
    std::filesystem::rename(from, to, error);
    return error;
}

} // namespace zn::headless
