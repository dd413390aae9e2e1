#include "headless/result/sync_files.h"

#include "headless/failure/failure.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

int syncStatus(const fs::path& path, int flags) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | flags);
    if (descriptor < 0) return errno;
    const int error = fsync(descriptor) == 0 ? 0 : errno;
    close(descriptor);
    return error;
}

void syncFile(const fs::path& file) {
    const int error = syncStatus(file, 0);
    if (error == 0) return;
    throw Failure(ExitStatus::kOther, file.string() + " did not reach the disk: " + std::strerror(error) +
                                          "; check the free space and the state of the disk.");
}

} // namespace

void syncFolder(const fs::path& folder) {
    syncStatus(folder, O_DIRECTORY);
}

void syncTree(const fs::path& folder) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        const fs::file_status status = entry.symlink_status();
        if (fs::is_directory(status)) syncTree(entry.path());
        if (fs::is_regular_file(status)) syncFile(entry.path());
    }
    syncFolder(folder);
}

} // namespace zn::headless
