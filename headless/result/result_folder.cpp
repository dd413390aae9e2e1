#include "headless/result/result_folder.h"

#include "headless/failure/failure.h"
#include "headless/result/earlier_result.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zn {

namespace {

namespace fs = std::filesystem;

// What a sudden end has to remove; guarded because the watcher of interrupts may be the one to do it.
std::mutex guard;
fs::path unfinished;
std::vector<fs::path> madeParents; // outermost first
bool keep = false;
fs::path leftBehind;

[[noreturn]] void fail(const fs::path& path, const std::string& why) {
    throw Failure(ExitStatus::kOther, path.string() + " " + why);
}

// The wanted place is free, or may be made free.
void checkWanted(const fs::path& wanted, bool replace) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(wanted, error))) return;
    if (!fs::is_directory(wanted, error)) fail(wanted, "exists and is not a folder; name another one.");
    if (fs::is_empty(wanted, error)) return;
    if (!replace) fail(wanted, "exists and is not empty; name another folder, or use --force to replace a result.");
    const std::string why = whyNoEarlierResult(wanted);
    if (!why.empty()) fail(wanted, why + "; --force replaces nothing but results.");
}

void makeParents(const fs::path& parent) {
    std::vector<fs::path> missing;
    for (fs::path path = parent; !path.empty() && !fs::exists(path); path = path.parent_path()) missing.push_back(path);
    for (auto path = missing.rbegin(); path != missing.rend(); ++path) {
        if (mkdir(path->c_str(), 0777) != 0 && errno != EEXIST) {
            fail(*path, std::string("cannot be made: ") + std::strerror(errno) + ".");
        }
        madeParents.push_back(*path);
    }
}

fs::path makeUnfinished(const fs::path& wanted) {
    const std::string stem =
        "." + wanted.filename().string().substr(0, 200) + ".unfinished-" + std::to_string(getpid());
    for (int attempt = 0;; ++attempt) {
        fs::path path = wanted.parent_path() / (stem + (attempt > 0 ? "-" + std::to_string(attempt) : ""));
        if (mkdir(path.c_str(), 0777) == 0) return path;
        if (errno != EEXIST) fail(wanted, std::string("cannot be made: ") + std::strerror(errno) + ".");
    }
}

} // namespace

ResultFolder::ResultFolder(const fs::path& wanted, bool replace) {
    const fs::path given = wanted.filename().empty() ? wanted.parent_path() : wanted; // "out/" is "out"
    wanted_ = fs::absolute(given).lexically_normal();
    checkWanted(wanted_, replace);
    const std::scoped_lock lock(guard);
    madeParents.clear();
    makeParents(wanted_.parent_path());
    unfinished_ = unfinished = makeUnfinished(wanted_);
    static const int once = std::atexit(discard); // a library that calls exit() leaves nothing behind either
    (void)once;
}

void ResultFolder::commit() {
    const std::scoped_lock lock(guard);
    if (unfinished.empty()) return;
    if (rename(unfinished_.c_str(), wanted_.c_str()) != 0) { // takes the place of nothing or of an empty folder
        if (renameat2(AT_FDCWD, unfinished_.c_str(), AT_FDCWD, wanted_.c_str(), RENAME_EXCHANGE) != 0) {
            fail(wanted_, std::string("cannot take its name: ") + std::strerror(errno) + ".");
        }
        std::error_code ignored; // the new result is in place; what stays of the old one is only clutter
        fs::remove_all(unfinished_, ignored);
    }
    unfinished.clear();
    madeParents.clear();
}

void ResultFolder::discard() {
    const std::scoped_lock lock(guard);
    if (keep && !unfinished.empty()) {
        leftBehind = unfinished;
        unfinished.clear();
        madeParents.clear();
        return;
    }
    std::error_code ignored;
    // Another thread may still be putting files into it: try until it stays gone.
    for (int attempt = 0; attempt < 100 && !unfinished.empty() && fs::exists(unfinished, ignored); ++attempt) {
        fs::remove_all(unfinished, ignored);
    }
    unfinished.clear();
    for (auto parent = madeParents.rbegin(); parent != madeParents.rend(); ++parent) rmdir(parent->c_str());
    madeParents.clear();
}

void ResultFolder::keepUnfinished() {
    const std::scoped_lock lock(guard);
    keep = true;
}

fs::path ResultFolder::left() {
    const std::scoped_lock lock(guard);
    return leftBehind;
}

} // namespace zn
