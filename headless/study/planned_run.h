#pragma once

#include "headless/bids/bids_name.h"
#include "headless/run/run_options.h"
#include "headless/study/study_options.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// One run of a study: an image with the files that belong to it.
struct PlannedRun {
    std::string name;             ///< "sub-01_ses-1_task-rest"; what its files are named after
    std::filesystem::path image;  ///< absolute
    std::string dataset;          ///< "raw", or the name of the derivatives
    std::filesystem::path folder; ///< "sub-01/ses-1/func"
    BidsName entities;
    std::filesystem::path mask; ///< empty: none, also below
    std::filesystem::path confounds;
    std::filesystem::path events;
    std::vector<std::filesystem::path> sidecars; ///< the JSON files that apply to the image
    std::filesystem::path labels;                ///< of its components, for denoising
    int dummyScans = 0;
    std::string problem;       ///< a sentence; such a run is recorded as unusable without being started
    std::string labelsProblem; ///< the same for denoising it
};

/// The options of the run, without an output.
RunOptions runOptions(const PlannedRun& run, const StudyOptions& study);

/// The same as arguments of `znica run`, without the image: what makes two results comparable.
std::vector<std::string> runSettings(const PlannedRun& run, const StudyOptions& study);

/// The files on which the result depends and that exist.
std::vector<std::filesystem::path> inputsOf(const PlannedRun& run, const StudyOptions& study);

} // namespace zn::headless
