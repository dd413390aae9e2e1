#pragma once

#include <filesystem>
#include <vector>

namespace zn {

/// The folder of a result while it comes into being: a hidden one beside the wanted folder, on the same disk, that
/// takes the wanted name in one step when everything is in it. Until then, and after any failure, the wanted folder is
/// as it was. One at a time a process.
class ResultFolder {
public:
    /// `replace`: an earlier result of this program may stand in the wanted place; it goes when the new one is there.
    /// Throws Failure (kOther): something else stands there, or the place cannot be written to.
    ResultFolder(const std::filesystem::path& wanted, bool replace);
    ~ResultFolder() { discard(); }
    ResultFolder(const ResultFolder&) = delete;
    ResultFolder& operator=(const ResultFolder&) = delete;

    /// The unfinished folder, absolute.
    const std::filesystem::path& path() const { return unfinished_; }
    /// The wanted folder, absolute.
    const std::filesystem::path& wanted() const { return wanted_; }

    /// Gives the folder its wanted name. Throws Failure (kOther).
    void commit();

    /// Removes what there is of the process's unfinished folder; nothing when it was committed. May be called from any
    /// thread, for the process that has to end early.
    static void discard();

    /// From now on discard() leaves the unfinished folder where it is.
    static void keepUnfinished();

    /// The unfinished folder that discard() left, once it has; empty when there is none.
    static std::filesystem::path left();

private:
    std::filesystem::path wanted_;
    std::filesystem::path unfinished_;
};

} // namespace zn
