#include "headless/result/result_folder.h"

#include "headless/failure/failure.h"
#include "headless/result/earlier_result.h"
#include "headless/result/move_entries.h"
#include "headless/result/output_place.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// What a sudden end has to remove; guarded because the watcher of interrupts may be the one to do it.
std::mutex guard;
fs::path unfinished;
std::vector<fs::path> madeParents; // outermost first
bool keep = false;
fs::path leftBehind;
std::string hiddenName; // of the last unfinished folder, and what it was to be called; empty once it is finished
std::string wantedName;

[[noreturn]] void fail(const fs::path& path, const std::string& why) {
    throw Failure(ExitStatus::kOther, path.string() + " " + why);
}

bool isEmpty(const fs::path& folder, const fs::path& but) {
    std::error_code error;
    const fs::directory_iterator entries(folder, error);
    return std::all_of(begin(entries), end(entries), [&](const auto& entry) { return entry.path() == but; });
}

// The wanted place is free, or may be made free. `own`: our folder inside it, or none.
void checkWanted(const fs::path& wanted, bool replace, const fs::path& own = {}) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(wanted, error))) return;
    if (!fs::is_directory(wanted, error)) fail(wanted, "exists and is not a folder; name another one.");
    if (isEmpty(wanted, own)) return;
    if (!replace) fail(wanted, "exists and is not empty; name another folder, or use --force to replace a result.");
    const std::string why = whyNoEarlierResult(wanted, own.filename().string());
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

// A new hidden folder in `place`, named after the wanted one.
fs::path makeHidden(const fs::path& place, const fs::path& wanted, const char* kind) {
    const std::string stem =
        "." + wanted.filename().string().substr(0, 200) + "." + kind + "-" + std::to_string(getpid());
    for (int attempt = 0;; ++attempt) {
        fs::path path = place / (stem + (attempt > 0 ? "-" + std::to_string(attempt) : ""));
        if (mkdir(path.c_str(), 0777) == 0) return path;
        if (errno != EEXIST) fail(place, std::string("cannot be written to: ") + std::strerror(errno) + ".");
    }
}

} // namespace

ResultFolder::ResultFolder(const fs::path& wanted, bool replace) : wanted_(outputPlace(wanted)), replace_(replace) {
    checkWanted(wanted_, replace_);
    std::error_code error;
    inside_ = fs::exists(wanted_, error) && !canBeReplaced(wanted_);
    const std::scoped_lock lock(guard);
    madeParents.clear();
    makeParents(wanted_.parent_path());
    unfinished_ = unfinished = makeHidden(inside_ ? wanted_ : wanted_.parent_path(), wanted_, "unfinished");
    hiddenName = unfinished_.string();
    wantedName = wanted_.string();
    static const int once = std::atexit(discard); // a library that calls exit() leaves nothing behind either
    (void)once;
}

void ResultFolder::commit() {
    const std::scoped_lock lock(guard);
    if (unfinished.empty()) return;
    unfinished.clear(); // from here on a failure leaves it: the work is done
    hiddenName.clear();
    madeParents.clear();
    try {
        checkWanted(wanted_, replace_, inside_ ? unfinished_ : fs::path()); // others may have been at it meanwhile
        inside_ ? moveOut() : takeName();
    } catch (const Failure& failure) {
        throw Failure(failure.status(),
                      std::string(failure.what()) + " The finished result is in " + unfinished_.string() + ".");
    }
}

void ResultFolder::takeName() {
    if (rename(unfinished_.c_str(), wanted_.c_str()) == 0) return; // in the place of nothing or of an empty folder
    if (renameat2(AT_FDCWD, unfinished_.c_str(), AT_FDCWD, wanted_.c_str(), RENAME_EXCHANGE) != 0) {
        fail(wanted_, std::string("cannot be replaced: ") + std::strerror(errno) + ".");
    }
    std::error_code ignored; // the new result is in place; what stays of the old one is only clutter
    fs::remove_all(unfinished_, ignored);
}

void ResultFolder::moveOut() {
    std::error_code ignored;
    const fs::path earlier = makeHidden(unfinished_, wanted_, "replaced");
    try {
        moveEntries(wanted_, earlier, unfinished_);
        try {
            moveEntries(unfinished_, wanted_, earlier);
        } catch (const fs::filesystem_error&) {
            moveEntries(earlier, wanted_);
            throw;
        }
    } catch (const fs::filesystem_error& error) {
        fs::remove(earlier, ignored); // when it is empty
        fail(wanted_, "cannot be filled: " + error.code().message() + ".");
    }
    fs::remove_all(unfinished_, ignored);
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

std::string ResultFolder::asWanted(std::string message) {
    const std::scoped_lock lock(guard);
    for (std::size_t at = message.find(hiddenName); !hiddenName.empty() && at != std::string::npos;
         at = message.find(hiddenName, at + wantedName.size())) {
        message.replace(at, hiddenName.size(), wantedName);
    }
    return message;
}

fs::path ResultFolder::left() {
    const std::scoped_lock lock(guard);
    return leftBehind;
}

} // namespace zn::headless
