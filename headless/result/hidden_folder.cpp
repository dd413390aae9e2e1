#include "headless/result/hidden_folder.h"

#include "headless/failure/failure.h"
#include "headless/result/move_entries.h"
#include "headless/text/unfinished_name.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

namespace zn::headless {

namespace fs = std::filesystem;

namespace {

void settleExchange(const fs::path& folder, const fs::path& leftover) {
    std::error_code error;
    const fs::path replacing = leftover / kReplacing;
    const fs::path replaced = leftover / kReplaced;
    try {
        if (fs::exists(replacing, error)) moveEntries(replacing, folder);
        if (fs::exists(replaced, error)) moveEntries(leftover, folder, replaced);
    } catch (const fs::filesystem_error& failure) {
        throw Failure(ExitStatus::kOther, leftover.string() +
                                              ", left by a run that was killed, holds files that cannot be moved to " +
                                              folder.string() + ": " + failure.code().message() + ".");
    }
}

} // namespace

fs::path makeHiddenFolder(const fs::path& place, const fs::path& wanted) {
    for (int number = 0;; ++number) {
        fs::path path = place / unfinishedName(wanted.filename().string(), number);
        if (mkdir(path.c_str(), 0777) == 0) return path;
        if (errno != EEXIST) {
            throw Failure(ExitStatus::kOther, place.string() + " cannot be written to: " + std::strerror(errno) + ".");
        }
    }
}

fs::path keepHiddenFolder(const fs::path& hidden, const fs::path& wanted, const char* kind) {
    constexpr int kMostNames = 1000;
    std::error_code error;
    if (fs::exists(hidden / kReplacing, error) || fs::exists(hidden / kReplaced, error)) return hidden;
    const std::string stem = (hidden.parent_path() / wanted.filename()).string() + "." + kind;
    for (int number = 1; number <= kMostNames; ++number) {
        fs::path kept = stem + (number > 1 ? "-" + std::to_string(number) : "");
        if (renameat2(AT_FDCWD, hidden.c_str(), AT_FDCWD, kept.c_str(), RENAME_NOREPLACE) == 0) return kept;
        if (errno != EEXIST) break;
    }
    return hidden;
}

void removeLeftovers(const fs::path& folder) {
    std::error_code error;
    for (const fs::path& leftover : leftoversIn(folder)) {
        if (fs::is_directory(fs::symlink_status(leftover, error))) settleExchange(folder, leftover);
        fs::remove_all(leftover, error);
    }
}

} // namespace zn::headless
