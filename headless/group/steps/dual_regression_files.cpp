#include "headless/group/steps/dual_regression_files.h"

#include "headless/compression/checksum.h"

namespace zn::headless {

std::filesystem::path dualRegressionFolder(const GroupStudy& study, const GroupRun& run) {
    return (study.folder / run.results).lexically_normal();
}

DualRegressionFiles::DualRegressionFiles(const std::string& run)
    : courses(run + "_desc-dualreg_timeseries.tsv"), record(run + "_desc-dualreg_timeseries.json"),
      metrics(run + "_desc-dualreg_metrics.tsv"), metricsDescription(run + "_desc-dualreg_metrics.json"),
      effect(run + "_desc-dualreg_stat-effect_statmap.nii.gz"), z(run + "_desc-dualreg_stat-z_statmap.nii.gz") {}

std::string dualRegressionBasis(const GroupStudy& study, const GroupMaps& maps, const GroupRun& run) {
    return checksumOf(study.id + ' ' + maps.checksum + ' ' + run.name);
}

} // namespace zn::headless
