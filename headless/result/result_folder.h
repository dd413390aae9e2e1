#pragma once

#include "headless/result/earlier_result.h"
#include "headless/result/unfinished_work.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The folder of a result in the making: a hidden one beside the wanted folder, on the same disk, that takes the wanted
/// name in one step once it is complete. Until then, and after any failure, the wanted folder is as it was.
///
/// If the name of an existing folder cannot be taken (canBeReplaced), the hidden folder is created inside it, and its
/// entries are moved out one by one at the end. If one of them cannot be moved, all go back.
///
/// What killed runs left in the parent folder and in the wanted folder is removed first.
class ResultFolder {
public:
    /// Throws Failure: kUsage when no place is named, kOther when something else is there or it is not writable.
    ///
    ///   unfinished   where the hidden folder is registered; outlives this
    ///   kind         what the folder will hold
    ///   replace      an earlier result of this kind in the wanted place is replaced once the new one is complete
    ResultFolder(UnfinishedWork& unfinished, const std::filesystem::path& wanted, ResultKind kind, bool replace);
    ~ResultFolder() { unfinished_.discard(); }
    ResultFolder(const ResultFolder&) = delete;
    ResultFolder& operator=(const ResultFolder&) = delete;

    /// The hidden folder, absolute.
    const std::filesystem::path& path() const { return hidden_; }

    /// Gives the folder its wanted name. Throws Failure (kOther) when something else has taken the place in the
    /// meantime or renaming fails; the finished result then stays under its hidden name, which the message gives.
    void commit();

private:
    void takeName();
    void settle() noexcept;
    void exchange();
    std::string whyNotReplaced(const std::filesystem::path& earlier) const;
    void moveOut();
    void putInPlaceOf(const std::vector<std::filesystem::path>& earlier, const std::filesystem::path& replacing,
                      const std::filesystem::path& replaced);

    UnfinishedWork& unfinished_;
    std::filesystem::path wanted_; // absolute
    std::filesystem::path hidden_;
    ResultKind kind_;
    bool replace_;
    bool inside_ = false; // the hidden folder is inside the wanted one
};

} // namespace zn::headless
