#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// The folder of a result while it comes into being: a hidden one beside the wanted folder, on the same disk, that
/// takes the wanted name in one step when everything is in it. Until then, and after any failure, the wanted folder is
/// as it was. One at a time a process.
///
/// An existing folder whose name cannot be taken (canBeReplaced) holds the hidden one inside; its entries then move out
/// of it one by one, and back when one cannot.
class ResultFolder {
public:
    /// `replace`: an earlier result of this program may stand in the wanted place; it goes when the new one is there.
    /// Throws Failure: kUsage when no place is named, kOther when something else stands there or it cannot be written
    /// to.
    ResultFolder(const std::filesystem::path& wanted, bool replace);
    ~ResultFolder() { discard(); }
    ResultFolder(const ResultFolder&) = delete;
    ResultFolder& operator=(const ResultFolder&) = delete;

    /// The unfinished folder, absolute.
    const std::filesystem::path& path() const { return unfinished_; }
    /// The wanted folder, absolute.
    const std::filesystem::path& wanted() const { return wanted_; }

    /// Gives the folder its wanted name. Throws Failure (kOther) when something else took the place meanwhile or the
    /// disk refuses; the finished result then stays under its hidden name, which the text tells.
    void commit();

    /// Removes what there is of the process's unfinished folder; nothing when it was committed. May be called from any
    /// thread, for the process that has to end early.
    static void discard();

    /// From now on discard() leaves the unfinished folder where it is.
    static void keepUnfinished();

    /// The unfinished folder that discard() left, once it has; empty when there is none.
    static std::filesystem::path left();

    /// A message with the names that files of the unfinished folder were to have: those in it mean nothing to the user,
    /// who finds no such folder afterwards.
    static std::string asWanted(std::string message);

private:
    void takeName();
    void moveOut();

    std::filesystem::path wanted_;
    std::filesystem::path unfinished_;
    bool replace_;
    bool inside_ = false; ///< the unfinished folder is in the wanted one
};

} // namespace zn::headless
