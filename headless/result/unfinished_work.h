#pragma once

#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace zn::headless {

/// What the process would leave behind if it ended now: the hidden folder of a result in the making and the parent
/// folders created for it. ResultFolder registers and releases it; code that ends the process early asks for its
/// removal. One piece of work at a time; every function may be called from any thread.
///
/// The object that `main` holds is static, so that nothing is left behind even if a library calls exit().
class UnfinishedWork {
public:
    UnfinishedWork() = default;
    ~UnfinishedWork() {
        discard();
        guard_.lock(); // for good: a signal from here on finds nothing to do, and the process ends as it was about to
    }
    UnfinishedWork(const UnfinishedWork&) = delete;
    UnfinishedWork& operator=(const UnfinishedWork&) = delete;

    /// Creates a hidden folder for the result that will be called `wanted`, and any missing parent folders.
    ///
    ///   place   where the hidden folder is created: the parent of the wanted folder, or the wanted folder itself
    ///
    /// Throws Failure (kOther), in which case nothing was created.
    std::filesystem::path begin(const std::filesystem::path& place, const std::filesystem::path& wanted);

    /// The work is done: calls `handOver`, which moves the folder into place. From here on nothing is removed, whether
    /// that succeeds or throws, and discard() and end() on other threads wait until it returns. Does nothing without
    /// unfinished work.
    void finish(const std::function<void()>& handOver);

    /// Removes the hidden folder and the parent folders created for it, or leaves them if they are to be kept.
    /// What cannot be removed stays; the next run removes it.
    void discard() noexcept;

    /// From now on discard() leaves the folder, under the name "WANTED.partial".
    void keep();

    /// Discards; then, if the folder is kept, writes a status.json into it and returns the sentence " The partial files
    /// are in FOLDER."; otherwise returns an empty text.
    ///
    ///   how          "failed" or "interrupted"
    ///   exitStatus   the exit status that the process is about to return
    std::string end(const char* how, int exitStatus);

    /// The same for a process that is interrupted. Returns the whole sentence, which says whether there is a result.
    ///
    /// From here on every function of this object keeps other threads waiting for the end of the process: they would go
    /// on in a folder that is gone, and end the process with another message and exit status.
    std::string interrupt(int exitStatus);

    /// For work that consists of many results: from now on interrupt() calls `stop`, which ends what is under way, and
    /// returns "interrupted; " with its sentence. An empty function ends this.
    void atInterrupt(std::function<std::string()> stop);

    /// Writes a result that is a single file. An interruption waits until `write` returns or throws.
    void deliver(const std::function<void()>& write);

    /// A message with the hidden folder's name replaced by the wanted one: the hidden name means nothing to the user,
    /// who will not find that folder afterwards.
    std::string asWanted(std::string message) const;

private:
    void makeParents(const std::filesystem::path& parent);
    void removeAll();
    void discardNow();
    std::string partialFiles(const char* how, int exitStatus) const;

    mutable std::mutex guard_;
    std::filesystem::path hidden_; // empty: nothing unfinished
    std::filesystem::path kept_;
    std::vector<std::filesystem::path> createdParents_; // outermost first
    std::function<std::string()> stop_;
    bool keep_ = false;
    bool finished_ = false;
    std::string hiddenName_; // of the last hidden folder, and the name it was meant to get; empty once it is finished
    std::string wantedName_;
};

} // namespace zn::headless
