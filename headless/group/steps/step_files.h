#pragma once

#include "headless/result/unfinished_work.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace zn::headless {

/// The files of one step of a study in the making: in a hidden folder until all are complete. Then each takes its name,
/// the record last: a step without a record has not been done. Files and records of an earlier try are replaced.
class StepFiles {
public:
    /// Removes what killed processes left in the folder. Throws Failure (kOther) when it cannot be written to.
    ///
    ///   folder   where the files will lie; created if need be
    ///   record   the name of the record
    StepFiles(UnfinishedWork& unfinished, const std::filesystem::path& folder, const std::string& record);
    ~StepFiles();
    StepFiles(const StepFiles&) = delete;
    StepFiles& operator=(const StepFiles&) = delete;

    /// Where to write a file of this name for now.
    std::filesystem::path operator[](const std::string& name) const { return hidden_ / name; }

    /// Has a file, or a folder inside that of the step, removed before the new files take their names, because it
    /// belongs to an earlier try.
    void supersede(std::filesystem::path earlier) { superseded_.push_back(std::move(earlier)); }

    /// Writes the record and gives all files their names. Throws Failure (kOther).
    void commit(const nlohmann::ordered_json& record) { commit(record.dump(2) + "\n"); }
    void commit(const std::string& record);

private:
    void handOver();
    void removeAtOnce(const std::filesystem::path& earlier);

    UnfinishedWork& unfinished_;
    std::filesystem::path folder_;
    std::string record_;
    bool created_ = false; // the folder
    std::filesystem::path hidden_;
    std::vector<std::filesystem::path> superseded_;
};

/// The record of a step that has been done on this basis: its member "Basis" is the same text. Nothing otherwise, also
/// for a damaged one.
///
///   basis   a checksum of everything on which the step's result depends
std::optional<nlohmann::ordered_json> recordOf(const std::filesystem::path& file, const std::string& basis);

/// The same, whatever its basis is.
std::optional<nlohmann::ordered_json> anyRecord(const std::filesystem::path& file);

} // namespace zn::headless
