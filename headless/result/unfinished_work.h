#pragma once

#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace zn::headless {

/// What a process would leave behind if it ended now: the hidden folder of a result in the making and the folders made
/// above it. ResultFolder enters and withdraws it; whoever ends the process early asks for its removal. One piece of
/// work at a time; every function may be called from any thread.
///
/// The object that `main` holds is static, so that a library that calls exit() leaves nothing behind either.
class UnfinishedWork {
public:
    UnfinishedWork() = default;
    ~UnfinishedWork() { discard(); }
    UnfinishedWork(const UnfinishedWork&) = delete;
    UnfinishedWork& operator=(const UnfinishedWork&) = delete;

    /// Makes a hidden folder for the result that is to be called `wanted`, and the missing folders above that one.
    ///
    ///   place   where the hidden folder is made: the folder above the wanted one, or the wanted one itself
    ///
    /// Throws Failure (kOther), and then nothing was made.
    std::filesystem::path begin(const std::filesystem::path& place, const std::filesystem::path& wanted);

    /// The work is done: calls `handOver`, which gives the folder its place. Nothing is removed from here on, whether
    /// that succeeds or throws, and nothing ends the process through discard() or end() in the middle of it. Without
    /// unfinished work nothing happens.
    void finish(const std::function<void()>& handOver);

    /// Removes the hidden folder and the folders made for it, or leaves them where they are to be kept.
    void discard();

    /// From now on discard() leaves the hidden folder where it is.
    void keep();

    /// Discards; then, for a folder that was kept, writes a status.json into it and returns the sentence
    /// " The partial files are in FOLDER."; else returns nothing.
    ///
    ///   how          "failed" or "interrupted"
    ///   exitStatus   that the process is about to end with
    std::string end(const char* how, int exitStatus);

    /// A message with the names that files of the hidden folder were to have: those in it mean nothing to the user, who
    /// finds no such folder afterwards.
    std::string asWanted(std::string message) const;

private:
    void makeParents(const std::filesystem::path& parent);
    void removeAll();

    mutable std::mutex guard_;
    std::filesystem::path hidden_; // empty: nothing unfinished
    std::filesystem::path kept_;
    std::vector<std::filesystem::path> madeParents_; // outermost first
    bool keep_ = false;
    std::string hiddenName_; // of the last hidden folder, and what it was to be called; empty once it is finished
    std::string wantedName_;
};

/// Makes a new hidden folder in `place`, named after the wanted one, and returns it. Throws Failure (kOther).
std::filesystem::path makeHiddenFolder(const std::filesystem::path& place, const std::filesystem::path& wanted,
                                       const char* kind);

} // namespace zn::headless
