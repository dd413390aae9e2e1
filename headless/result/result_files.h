#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace zn::headless {

/// Every file that znica leaves; result_files.def lists them.
enum class ResultFile {
#define ZN_RESULT_FILE(identifier, name, place, ignored) identifier,
#include "headless/result/result_files.def"
#undef ZN_RESULT_FILE
};

/// Where a file belongs: the folder of a run, that of a simulated sample, both, or the plug-in's folder within a run's,
/// there either under the same name for every image or after the image's stem.
enum class ResultPlace { kRun, kSample, kRunAndSample, kPlugin, kPluginImage };

struct ResultFileEntry {
    std::string_view name; ///< whole or, beginning with '_' or '.', what follows a stem; a folder's ends in '/'
    ResultPlace place;
    std::string_view ignored; ///< pattern for .bidsignore; empty: none

    /// The whole name in a folder whose names begin with `stem`.
    std::string in(const std::string& stem) const;
};

/// The whole list, in the order of its file.
std::span<const ResultFileEntry> resultFileList();

/// Name or ending of one file.
std::string_view nameOf(ResultFile file);

/// What the names of every simulated sample begin with.
constexpr char kSampleStem[] = "sub-sim_task-blocks";

/// The files of one folder by what they hold.
class ResultFiles {
public:
    /// `stem`: what the names begin with that follow one, as in "sub-02_task-oneback_run-1".
    ResultFiles(std::filesystem::path folder, std::string stem);

    /// A folder that znica run or znica simulate made, recognised by the file `key` that it must hold. Throws Failure
    /// (kInput) when there is none.
    static ResultFiles in(const std::filesystem::path& folder, ResultFile key = ResultFile::kComponents);

    const std::filesystem::path& folder() const { return folder_; }
    const std::string& stem() const { return stem_; }

    std::filesystem::path operator[](ResultFile file) const;
    bool has(ResultFile file) const;
    /// A whole text file. Throws Failure (kInput) when it cannot be read.
    std::string text(ResultFile file) const;
    /// The same for a file that may be missing: then empty.
    std::string textIfAny(ResultFile file) const;

private:
    std::filesystem::path folder_;
    std::string stem_;
};

} // namespace zn::headless
