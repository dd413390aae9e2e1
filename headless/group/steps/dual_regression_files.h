#pragma once

#include "headless/group/steps/group_maps.h"
#include "headless/group/steps/group_study.h"

#include <filesystem>
#include <string>

namespace zn::headless {

/// The folder of a run's dual regression.
std::filesystem::path dualRegressionFolder(const GroupStudy& study, const GroupRun& run);

/// The names of a run's files there: "sub-01_task-rest_desc-dualreg_timeseries.tsv" and so on. The description of the
/// courses is the record of the step.
struct DualRegressionFiles {
    explicit DualRegressionFiles(const std::string& run);

    std::string courses;
    std::string record;
    std::string metrics;
    std::string metricsDescription;
    std::string effect;
    std::string z;
};

/// What the record of a run is recognised by.
std::string dualRegressionBasis(const GroupStudy& study, const GroupMaps& maps, const GroupRun& run);

} // namespace zn::headless
