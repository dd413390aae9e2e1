#include "headless/run/run_report.h"

#include "headless/report/mean_image.h"
#include "headless/report/report_page.h"
#include "headless/report/write_report.h"
#include "headless/result/design_table.h"

#include <cstdio>

namespace zn::headless {

void addReport(const std::filesystem::path& folder, const std::string& stem, const Session& session,
               const ImageHeader& functional) {
    writeMeanImage(folder / (stem + "_desc-mean_bold.nii.gz"), session.series, functional);
    if (!session.design.names.empty()) writeDesignTable(folder / (stem + "_desc-ICA_design.tsv"), session.design);
    const auto page = findReportTemplate();
    if (page.empty()) {
        std::fprintf(stderr, "znica: no report.html is written, because its template is not installed.\n");
    } else {
        writeReport(folder, page);
    }
}

} // namespace zn::headless
