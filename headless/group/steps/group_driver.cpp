#include "headless/group/steps/group_driver.h"

namespace zn::headless {

ExitStatus analyseGroup(const GroupOptions& options, UnfinishedWork& unfinished) {
    if (!options.runs.empty()) planStudyOfGroup(options, unfinished); // list of runs -> study.json, common mask
    requirePossibleComponents(options);
    reduceBatch(options, unfinished);                             // runs -> m rows
    mergeBatches(options, unfinished);                            // batches -> the group's rows
    const ExitStatus status = separateGroup(options, unfinished); // K leading rows -> group components
    regressRuns(options, unfinished);                             // group components -> every run's courses and maps
    writeGroupTables(options, unfinished);                        // amplitudes, correlations between courses
    return status;
}

} // namespace zn::headless
