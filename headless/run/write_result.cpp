#include "headless/run/stages.h"

#include "headless/failure/as_failure.h"
#include "headless/memory/available_memory.h"
#include "headless/report/page_images.h"
#include "headless/report/report_page.h"
#include "headless/report/write_report.h"
#include "headless/result/bids_files.h"
#include "headless/result/course_tables.h"
#include "headless/result/metrics_description.h"
#include "headless/result/metrics_table.h"
#include "headless/run/run_record.h"

#include <cmath>
#include <cstdio>
#include <exception>
#include <new>
#include <optional>
#include <span>
#include <vector>

namespace zn::headless {

namespace {

ReferenceNames referenceNames(const Run& run) {
    ReferenceNames names;
    names.predictors = run.session.design.names;
    for (const Region& region : run.session.regions) names.regions.push_back(region.name);
    if (run.confounds) names.confounds = run.confounds->names;
    return names;
}

void writeMetrics(const Run& run) {
    const ResultFiles& files = *run.files;
    const ComponentFacts facts{referenceNames(run), run.measures,
                               run.repeats ? run.repeats->stability : std::vector<Stability>()};
    writeMetricsTable(files[ResultFile::kMetrics], run.session.maps, facts);
    writeMetricsDescription(files[ResultFile::kMetricsDescription], facts,
                            frequencyBands(run.session.millisecondsPerVolume));
}

void writeTimeSeries(const Run& run) {
    const ResultFiles& files = *run.files;
    writeTimeSeriesTable(files[ResultFile::kTimeSeries], run.courses);
    writeTimeSeriesDescription(files[ResultFile::kTimeSeriesDescription], run.componentsFound());
}

// While the maps are still being compressed. Nothing without a page; a failure leaves the images to addReport(), which
// reports it.
std::optional<PageImages> packImages(Run& run) {
    if (!run.options.control.report || findReportTemplate().empty()) return std::nullopt;
    std::vector<std::span<const float>> maps;
    for (const VolumeMap& map : run.session.maps.maps()) maps.emplace_back(map.values);
    try {
        return PageImages{mapBlocks(maps, run.mask.voxels, run.products->team()), packedMean(run.mean)};
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

void addReport(const Run& run, const std::optional<PageImages>& images) {
    const ResultFiles& files = *run.files;
    const auto page = findReportTemplate();
    if (page.empty()) {
        std::fprintf(stderr, "znica: no report.html was written because its template is not installed.\n");
        return;
    }
    try {
        makeReport(files, page, {}, images).write(files[ResultFile::kReport]);
    } catch (const std::exception& error) { // the analysis is complete without its page
        const std::string why = run.unfinished.asWanted(asFailure(error).what());
        std::fprintf(stderr, "znica: no report.html was written: %s\n", why.c_str());
    }
}

void printSummary(const Run& run) {
    std::printf("%lld voxels x %d volumes analysed\n", static_cast<long long>(run.voxelsAnalysed()), run.volumes);
    std::printf("%d of %d components found%s", run.componentsFound(), run.eigenvalues.count(),
                run.foundAll() ? "" : ": the others did not converge");
    if (run.repeats) std::printf("; %d of %zu runs found all", run.repeats->converged, run.repeats->seeds.size());
    std::printf("\n");
    if (!std::isnan(run.keptPercent)) {
        std::printf("%.2f %% of the variance over time kept (the mean image not counted)\n", run.keptPercent);
    }
    std::printf("%.1f s, of which %.1f s in the plug-in; peak memory %.0f MiB\n", run.total.seconds(),
                run.seconds.plugin, static_cast<double>(peakMemoryBytes()) / 1048576.0);
    std::printf("result: %s\n", run.options.out.c_str());
}

// A result that is in its place stays one even if there is no memory for the summary.
void summarise(const Run& run) {
    if (run.options.control.quiet) return;
    try {
        printSummary(run);
    } catch (const std::bad_alloc&) {
        std::printf("result: %s\n", run.options.out.c_str());
    }
}

// On standard error, even with --quiet: the exit status alone does not say where to look.
void explainMissing(const Run& run) {
    std::fflush(stdout);
    std::fprintf(
        stderr,
        "znica: %d of %d components found; allow more iterations with --max-iterations or a larger threshold with "
        "--epsilon; the partial result is in %s.\n",
        run.componentsFound(), run.eigenvalues.count(), run.options.out.c_str());
}

} // namespace

ExitStatus writeResult(Run& run) {
    run.log->requireWritten();
    writeMetrics(run);
    writeTimeSeries(run);
    if (!run.session.design.names.empty()) writeDesignTable((*run.files)[ResultFile::kDesign], run.session.design);
    const auto images = packImages(run);
    finishMaps(run);
    writeDecomposition(run);
    writeStatus(run);
    writeBidsFiles(*run.files, ZNICA_VERSION, run.library->name(), run.library->version());
    if (run.options.control.report) addReport(run, images);
    run.folder->commit();
    run.progress.clear();
    summarise(run);
    if (run.foundAll()) return ExitStatus::kDone;
    explainMissing(run);
    return ExitStatus::kGaveUp;
}

} // namespace zn::headless
