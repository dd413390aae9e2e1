#include "headless/result/unfinished_work.h"

#include "headless/failure/failure.h"
#include "headless/result/hidden_folder.h"
#include "headless/result/result_files.h"

#include <cerrno>
#include <cstring>
#include <exception>
#include <fstream>
#include <system_error>
#include <utility>

#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

namespace zn::headless {

namespace fs = std::filesystem;

fs::path UnfinishedWork::begin(const fs::path& place, const fs::path& wanted) {
    const std::scoped_lock lock(guard_);
    try {
        makeParents(wanted.parent_path());
        hidden_ = makeHiddenFolder(place, wanted);
    } catch (...) {
        removeAll();
        throw;
    }
    finished_ = false; // earlier work may have been
    hiddenName_ = hidden_.string();
    wantedName_ = wanted.string();
    return hidden_;
}

void UnfinishedWork::makeParents(const fs::path& parent) {
    std::vector<fs::path> missing;
    for (fs::path path = parent; !path.empty() && !fs::exists(path); path = path.parent_path()) missing.push_back(path);
    for (auto path = missing.rbegin(); path != missing.rend(); ++path) {
        if (mkdir(path->c_str(), 0777) != 0 && errno != EEXIST) {
            throw Failure(ExitStatus::kOther, path->string() + " cannot be created: " + std::strerror(errno) + ".");
        }
        createdParents_.push_back(*path);
    }
}

void UnfinishedWork::finish(const std::function<void()>& handOver) {
    const std::scoped_lock lock(guard_);
    if (hidden_.empty()) return;
    hidden_.clear();
    hiddenName_.clear();
    createdParents_.clear();
    handOver();
    finished_ = true;
}

void UnfinishedWork::deliver(const std::function<void()>& write) {
    const std::scoped_lock lock(guard_);
    write();
    finished_ = true;
}

void UnfinishedWork::discard() noexcept {
    const std::scoped_lock lock(guard_);
    try {
        discardNow();
    } catch (const std::exception&) {
        hidden_.clear(); // removing needs memory, too
    }
}

void UnfinishedWork::discardNow() {
    if (keep_ && !hidden_.empty()) {
        kept_ = keepHiddenFolder(hidden_, wantedName_, "partial");
        hidden_.clear();
        createdParents_.clear();
        return;
    }
    removeAll();
}

void UnfinishedWork::removeAll() {
    std::error_code ignored;
    // Another thread may still be writing files into it: try until it is gone for good.
    for (int attempt = 0; attempt < 100 && !hidden_.empty() && fs::exists(hidden_, ignored); ++attempt) {
        fs::remove_all(hidden_, ignored);
    }
    hidden_.clear();
    for (auto parent = createdParents_.rbegin(); parent != createdParents_.rend(); ++parent) rmdir(parent->c_str());
    createdParents_.clear();
}

void UnfinishedWork::keep() {
    const std::scoped_lock lock(guard_);
    keep_ = true;
}

std::string UnfinishedWork::end(const char* how, int exitStatus) {
    const std::scoped_lock lock(guard_);
    discardNow();
    return partialFiles(how, exitStatus);
}

std::string UnfinishedWork::interrupt(int exitStatus) {
    guard_.lock(); // for good
    if (stop_) return "interrupted; " + stop_();
    discardNow();
    const char* state = finished_ ? "the result had been written already." : "no result was written.";
    return std::string("interrupted; ") + state + partialFiles("interrupted", exitStatus);
}

void UnfinishedWork::atInterrupt(std::function<std::string()> stop) {
    const std::scoped_lock lock(guard_);
    stop_ = std::move(stop);
}

std::string UnfinishedWork::partialFiles(const char* how, int exitStatus) const {
    if (kept_.empty()) return "";
    const nlohmann::ordered_json status = {{"status", how}, {"exit_status", exitStatus}, {"partial", true}};
    // Unchecked: if the disk is full, the user is already being told.
    std::ofstream(kept_ / nameOf(ResultFile::kStatus)) << status.dump(2) << '\n';
    return " The partial files are in " + kept_.string() + ".";
}

std::string UnfinishedWork::asWanted(std::string message) const {
    const std::scoped_lock lock(guard_);
    for (std::size_t at = message.find(hiddenName_); !hiddenName_.empty() && at != std::string::npos;
         at = message.find(hiddenName_, at + wantedName_.size())) {
        message.replace(at, hiddenName_.size(), wantedName_);
    }
    return message;
}

} // namespace zn::headless
