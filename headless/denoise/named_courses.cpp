#include "headless/denoise/named_courses.h"

#include "headless/denoise/evidence_table.h"
#include "headless/result/result_names.h"

namespace zn::headless {

void writeNamedCourses(const Denoising& run) {
    std::vector<EvidenceColumn> columns;
    for (std::size_t i = 0; i < run.verdicts.size(); ++i) {
        const Verdict& verdict = run.verdicts[i];
        EvidenceColumn column;
        column.name = (verdict.rejected ? "rejected_" : "accepted_") +
                      componentName(static_cast<int>(i)).substr(std::string("ICA_").size());
        column.description = "Time course of " + run.courses.names[i] + ", " +
                             (verdict.rejected ? "rejected" : "accepted") +
                             (verdict.reason.empty() ? "." : ": " + verdict.reason) +
                             (run.dummyScans > 0 ? " n/a: dummy scan, not analysed." : "");
        column.cells.assign(static_cast<std::size_t>(run.dummyScans), "n/a");
        for (const double value : run.courses.values[i]) column.cells.push_back(cellOf(value));
        columns.push_back(std::move(column));
    }
    const ResultFiles& files = *run.files;
    writeEvidenceTable(files[ResultFile::kTimeSeries], files[ResultFile::kTimeSeriesDescription], columns);
}

} // namespace zn::headless
