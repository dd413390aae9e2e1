#pragma once

#include "headless/study/planned_run.h"

#include <filesystem>
#include <string>

namespace zn::headless {

/// The folder of a study's results, a BIDS derivative:
///
///   dataset_description.json  .bidsignore
///   sub-01/[ses-1/]func/      the results, "NAME_desc-ICA_components.nii.gz" with "NAME_desc-ICA_components.json", ...
///   sub-01_task-rest.html     the report of a run
///   logs/sub-01_task-rest.json, .log     its record, written last: a run without one has no result
///   logs/failed/              records of later tries without a result, while the earlier result is kept
///   logs/denoise/             the same for its denoised image
///   sub-01_task-rest_denoised.html       the report with the page on denoising
///   index.html  runs.tsv  runs.json      the overview
///   group/                    a group analysis; what it has about single runs lies beside their results
class StudyFolder {
public:
    explicit StudyFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    const std::filesystem::path& path() const { return folder_; }
    std::filesystem::path logs() const { return folder_ / "logs"; }
    std::filesystem::path record(const std::string& run) const { return logs() / (run + ".json"); }
    std::filesystem::path denoiseRecord(const std::string& run) const { return logs() / "denoise" / (run + ".json"); }
    std::filesystem::path denoiseLog(const std::string& run) const { return logs() / "denoise" / (run + ".log"); }
    std::filesystem::path log(const std::string& run) const { return logs() / (run + ".log"); }

    /// Creates the folder, removes what ended processes of this machine left in it, and writes the files that make it a
    /// BIDS derivative. Throws Failure: kUsage when it is the dataset, contains it or lies in it elsewhere than in
    /// derivatives/, kOther when it cannot be written, kInput when another program's dataset is there.
    void prepare(const StudyOptions& options) const;

private:
    std::filesystem::path folder_;
};

} // namespace zn::headless
