#include "headless/result/output_place.h"

#include "headless/failure/failure.h"

#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

bool isMountPoint(const fs::path& folder) {
    struct statx here {};
    struct statx above {};
    if (statx(AT_FDCWD, folder.c_str(), 0, STATX_INO, &here) != 0) return false;
    if ((here.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0) return true;
    if (statx(AT_FDCWD, (folder / "..").c_str(), 0, STATX_INO, &above) != 0) return false; // older kernels
    return here.stx_dev_major != above.stx_dev_major || here.stx_dev_minor != above.stx_dev_minor;
}

// In a folder like /tmp only the owner can rename an entry.
bool mayRename(const fs::path& folder) {
    struct stat here {};
    struct stat above {};
    const fs::path parent = folder.parent_path();
    if (access(parent.c_str(), W_OK | X_OK) != 0) return false;
    if (stat(folder.c_str(), &here) != 0 || stat(parent.c_str(), &above) != 0) return false;
    const uid_t user = geteuid();
    return (above.st_mode & S_ISVTX) == 0 || user == 0 || user == here.st_uid || user == above.st_uid;
}

} // namespace

fs::path outputPlace(const fs::path& wanted) {
    if (wanted.empty()) throw Failure(ExitStatus::kUsage, "--out is empty; name a folder.");
    std::error_code error;
    const fs::path absolute = fs::absolute(wanted, error);
    if (error) throw Failure(ExitStatus::kOther, "the current folder is gone; change to another one.");
    fs::path place = fs::weakly_canonical(absolute, error);
    if (error) place = absolute.lexically_normal(); // any problem with it shows when the folder is created
    return place.has_filename() ? place : place.parent_path();
}

bool canBeReplaced(const fs::path& folder) {
    std::error_code error;
    return !fs::equivalent(folder, ".", error) && !isMountPoint(folder) && mayRename(folder);
}

} // namespace zn::headless
