#pragma once

#include <filesystem>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace zn::headless {

/// Every file that znica writes; result_files.def lists them.
enum class ResultFile {
#define ZN_RESULT_FILE(identifier, name, place, ignored) identifier,
#include "headless/result/result_files.def"
#undef ZN_RESULT_FILE
};

/// Where a file belongs: the folder of a run, that of a simulated sample, that of a denoised image, several of them, or
/// the plug-in's folder within that of a run, there either with a fixed name or with one that begins with the image's
/// stem.
enum class ResultPlace {
    kRun,
    kSample,
    kDenoised,
    kRunAndSample,
    kRunAndDenoised,
    kRunSampleAndDenoised,
    kPlugin,
    kPluginImage
};

struct ResultFileEntry {
    std::string_view name; ///< the entire name, or from '_' or '.' what follows a stem; folders end in '/'
    ResultPlace place;
    std::string_view ignored; ///< pattern for .bidsignore; empty: none

    /// The full name in a folder whose names begin with `stem`.
    std::string in(const std::string& stem) const;
    /// Whether it may be in the folder of a run.
    bool isOfRun() const;
};

/// The entire list, in the order of its file.
std::span<const ResultFileEntry> resultFileList();

/// Name or ending of one file.
std::string_view nameOf(ResultFile file);

/// The patterns of .bidsignore for files of these places, each once, in the order of the list.
std::string ignoredNames(std::initializer_list<ResultPlace> places);

/// What the names of every simulated sample begin with.
constexpr char kSampleStem[] = "sub-sim_task-blocks";

/// The files of one folder, by what they contain.
class ResultFiles {
public:
    /// `stem`: what the names begin with, such as "sub-02_task-oneback_run-1".
    ResultFiles(std::filesystem::path folder, std::string stem);

    /// A folder that znica run or znica simulate made, recognised by the file `key` that it must hold. Throws Failure
    /// (kInput) when there is none.
    static ResultFiles in(const std::filesystem::path& folder, ResultFile key = ResultFile::kComponents);

    /// The result of an image: the one named after it in a folder of znica bids, either that of the whole study or one
    /// with the results of several runs, or the only result in the folder. Throws Failure (kInput) when there is none.
    static ResultFiles of(const std::filesystem::path& image, const std::filesystem::path& folder);

    const std::filesystem::path& folder() const { return folder_; }
    const std::string& stem() const { return stem_; }

    std::filesystem::path operator[](ResultFile file) const;
    bool has(ResultFile file) const;
    /// Throws Failure (kInput) when the folder's file system cannot have one of the names of a run or a sample, or, for
    /// kDenoised, of a denoised image.
    void requireShortNames(ResultPlace kind = ResultPlace::kRun) const;
    /// The text of a file. Throws Failure (kInput) when it cannot be read.
    std::string text(ResultFile file) const;
    /// The same for a file that may be missing, in which case it is empty.
    std::string textIfAny(ResultFile file) const;

private:
    std::filesystem::path folder_;
    std::string stem_;
};

} // namespace zn::headless
