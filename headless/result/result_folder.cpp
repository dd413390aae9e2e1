#include "headless/result/result_folder.h"

#include "headless/failure/as_failure.h"
#include "headless/result/hidden_folder.h"
#include "headless/result/move_entries.h"
#include "headless/result/output_place.h"
#include "headless/result/sync_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <system_error>

#include <fcntl.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& path, const std::string& why) {
    throw Failure(ExitStatus::kOther, path.string() + " " + why);
}

bool isEmpty(const fs::path& folder, const fs::path& but) {
    const fs::directory_iterator entries(folder); // throws: what cannot be listed is not taken for empty
    return std::all_of(begin(entries), end(entries), [&](const auto& entry) { return entry.path() == but; });
}

// Throws unless the wanted place is free or may be cleared. `own`: our folder inside it, if any.
void checkWanted(const fs::path& wanted, ResultKind kind, bool replace, const fs::path& own = {}) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(wanted, error);
    if (error == std::errc::filename_too_long) fail(wanted, "is too long a name; choose a shorter one.");
    if (!fs::exists(status)) return;
    if (!fs::is_directory(wanted, error)) fail(wanted, "exists and is not a folder; name another one.");
    if (isEmpty(wanted, own)) return;
    if (!replace) fail(wanted, "exists and is not empty; name another folder, or use --force to replace a result.");
    const std::string why = whyNotAResult(wanted, kind, own.filename().string());
    if (!why.empty()) fail(wanted, why + "; --force replaces only " + namesOfKind(kind) + ".");
}

} // namespace

ResultFolder::ResultFolder(UnfinishedWork& unfinished, const fs::path& wanted, ResultKind kind, bool replace)
    : unfinished_(unfinished), wanted_(outputPlace(wanted)), kind_(kind), replace_(replace) {
    removeLeftovers(wanted_.parent_path());
    removeLeftovers(wanted_);
    checkWanted(wanted_, kind_, replace_);
    std::error_code error;
    inside_ = fs::exists(wanted_, error) && !canBeReplaced(wanted_);
    hidden_ = unfinished_.begin(inside_ ? wanted_ : wanted_.parent_path(), wanted_);
}

void ResultFolder::commit() {
    syncTree(hidden_);
    unfinished_.finish([this] {
        try {
            checkWanted(wanted_, kind_, replace_,
                        inside_ ? hidden_ : fs::path()); // it may have been taken in the meantime
            inside_ ? moveOut() : takeName();
        } catch (const std::exception& error) {
            const Failure failure = asFailure(error);
            throw Failure(failure.status(), std::string(failure.what()) + " The finished result is in " +
                                                keepHiddenFolder(hidden_, wanted_, "finished").string() + ".");
        }
    });
}

void ResultFolder::takeName() {
    if (rename(hidden_.c_str(), wanted_.c_str()) == 0) return settle();
    if (!replace_) fail(wanted_, std::string("cannot be created: ") + std::strerror(errno) + ".");
    exchange();
    try {
        const std::string why = whyNotReplaced(hidden_);
        if (!why.empty()) fail(wanted_, why);
    } catch (const std::exception&) {
        exchange();
        throw;
    }
    settle();
}

// The new result is in place, and nothing that fails now changes that: leftovers of the old one are only clutter.
void ResultFolder::settle() noexcept {
    try {
        syncFolder(inside_ ? wanted_ : wanted_.parent_path()); // before the earlier result goes
        fs::remove_all(hidden_);
    } catch (const std::exception&) { // the next run removes them
    }
}

// Asked once more of what was taken out: it may not be what stood there when the place was checked.
std::string ResultFolder::whyNotReplaced(const fs::path& earlier) const {
    if (fs::is_empty(earlier)) return "";
    if (!replace_) return "is no longer empty; name another folder.";
    const std::string why = whyNotAResult(earlier, kind_);
    return why.empty() ? "" : why + "; --force replaces only " + namesOfKind(kind_) + ".";
}

void ResultFolder::exchange() {
    if (renameat2(AT_FDCWD, hidden_.c_str(), AT_FDCWD, wanted_.c_str(), RENAME_EXCHANGE) == 0) return;
    fail(wanted_, std::string("cannot be replaced: ") + std::strerror(errno) + ".");
}

void ResultFolder::moveOut() {
    std::error_code ignored;
    const fs::path replacing = hidden_ / kReplacing; // all memory that undoing the first step needs is allocated here
    const fs::path replaced = hidden_ / kReplaced;
    try {
        fs::create_directory(replacing);
        putInPlaceOf(moveEntries(wanted_, replacing, hidden_), replacing, replaced);
    } catch (const fs::filesystem_error& error) {
        fs::remove(replacing, ignored); // if it is empty
        fail(wanted_, "cannot be filled: " + error.code().message() + ".");
    } catch (const std::bad_alloc&) {
        fs::remove(replacing, ignored);
        throw;
    }
    settle();
}

// Of the earlier entries, which are in the first of the two subfolders now. Any failure moves them back.
void ResultFolder::putInPlaceOf(const std::vector<fs::path>& earlier, const fs::path& replacing,
                                const fs::path& replaced) {
    std::error_code ignored;
    try {
        const std::string why = whyNotReplaced(replacing);
        if (!why.empty()) fail(wanted_, why);
        fs::rename(replacing, replaced); // from here on a later run would complete the exchange, before it undo it
        moveEntries(hidden_, wanted_, replaced);
    } catch (const HalfMoved&) { // new entries are among those of the folder: the next run adds the others
        throw;
    } catch (const std::exception&) {
        fs::rename(replaced, replacing, ignored);
        moveNamed(earlier, replacing, wanted_);
        fs::remove(replacing, ignored);
        throw;
    }
}

} // namespace zn::headless
