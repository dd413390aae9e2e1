#include "headless/result/sync_files.h"

#include "headless/failure/failure.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

void sync(const fs::path& path, int flags) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | flags);
    // Some network file systems cannot sync a folder (EINVAL) and do it themselves.
    const bool synced = descriptor >= 0 && (fsync(descriptor) == 0 || errno == EINVAL);
    const int error = errno;
    if (descriptor >= 0) close(descriptor);
    if (synced) return;
    throw Failure(ExitStatus::kOther, path.string() + " did not reach the disk: " + std::strerror(error) +
                                          "; check the free space and the state of the disk.");
}

} // namespace

void syncFolder(const fs::path& folder) {
    sync(folder, O_DIRECTORY);
}

void syncTree(const fs::path& folder) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        const fs::file_status status = entry.symlink_status();
        if (fs::is_directory(status)) syncTree(entry.path());
        if (fs::is_regular_file(status)) sync(entry.path(), 0);
    }
    syncFolder(folder);
}

} // namespace zn::headless
