#include "headless/denoise/denoise_stages.h"

#include "headless/blas/matrix_products.h"
#include "headless/denoise/denoise_record.h"
#include "headless/denoise/denoising_memory.h"
#include "headless/denoise/denoising_page.h"
#include "headless/denoise/evidence_files.h"
#include "headless/denoise/named_courses.h"
#include "headless/failure/as_failure.h"
#include "headless/nifti/write_series.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

namespace zn::headless {

namespace {

// The image is complete without its page.
void addPage(const Denoising& run, const Quality& quality) {
    if (!run.options.report) return;
    try {
        denoisingPage(run, quality).write((*run.files)[ResultFile::kReport]);
    } catch (const std::exception& error) {
        const std::string why = run.unfinished.asWanted(asFailure(error).what());
        std::fprintf(stderr, "znica: no report.html was written: %s\n", why.c_str());
    }
}

void printSummary(const Denoising& run, const Quality& quality) {
    if (run.options.quiet) return;
    std::printf("%-50s %12s %12s\n", "", "before", "after");
    for (const QualityRow& row : qualityRows(quality)) {
        const std::string title = row.title + (*row.units ? std::string(" (") + row.units + ")" : "");
        std::printf("%-50s %12.5g %12.5g\n", title.c_str(), row.values.before, row.values.after);
    }
    std::printf("result: %s\n", run.options.out.c_str());
}

} // namespace

void writeResult(Denoising& run, const Quality& quality) {
    const ResultFiles& files = *run.files;
    const int threads = std::min(kMostCompressing, MatrixProducts::threadsFor(run.options.threads));
    writeSeries(files[imageFileOf(run.options.method)], run.series.floats.get(), run.functional.volumes, run.functional,
                run.functional.secondsPerVolume.value_or(run.secondsPerVolume), threads);
    writeSidecar(run);
    writeNamedCourses(run);
    writeEvidence(run, quality);
    writeDatasetFiles(run);
    addPage(run, quality);
    run.folder->commit();
    printSummary(run, quality);
}

} // namespace zn::headless
