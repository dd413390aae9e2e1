#pragma once

#include "headless/result/unfinished_work.h"

#include <filesystem>

namespace zn::headless {

/// The folder of a result in the making: a hidden one beside the wanted folder, on the same disk, that takes the wanted
/// name in one step when everything is in it. Until then, and after any failure, the wanted folder is as it was.
///
/// An existing folder whose name cannot be taken (canBeReplaced) holds the hidden one inside; its entries then move out
/// of it one by one, and back when one cannot.
class ResultFolder {
public:
    /// Throws Failure: kUsage when no place is named, kOther when something else stands there or it cannot be written
    /// to.
    ///
    ///   unfinished   where the hidden folder is entered; outlives this
    ///   replace      an earlier result of this program may stand in the wanted place; it goes when the new one is
    ///   there
    ResultFolder(UnfinishedWork& unfinished, const std::filesystem::path& wanted, bool replace);
    ~ResultFolder() { unfinished_.discard(); }
    ResultFolder(const ResultFolder&) = delete;
    ResultFolder& operator=(const ResultFolder&) = delete;

    /// The hidden folder, absolute.
    const std::filesystem::path& path() const { return hidden_; }

    /// Gives the folder its wanted name. Throws Failure (kOther) when something else took the place meanwhile or the
    /// disk refuses; the finished result then stays under its hidden name, which the message gives.
    void commit();

private:
    void takeName();
    void moveOut();

    UnfinishedWork& unfinished_;
    std::filesystem::path wanted_; // absolute
    std::filesystem::path hidden_;
    bool replace_;
    bool inside_ = false; // the hidden folder is in the wanted one
};

} // namespace zn::headless
