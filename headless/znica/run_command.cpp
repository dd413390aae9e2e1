#include "headless/znica/run_command.h"

#include "headless/nifti/series_check.h"
#include "headless/result/component_image.h"
#include "headless/result/metrics_table.h"
#include "headless/result/mixing_table.h"
#include "headless/result/result_folder.h"
#include "headless/result/result_names.h"
#include "headless/result/text_file.h"
#include "headless/znica/decomposition.h"
#include "headless/znica/plugin_library.h"
#include "headless/znica/run_inputs.h"
#include "headless/znica/run_log.h"
#include "headless/znica/run_plugin.h"
#include "headless/znica/run_report.h"
#include "headless/znica/stopwatch.h"

#include <cstdio>

namespace zn {

namespace {

namespace fs = std::filesystem;

ReferenceNames referenceNames(const Session& session) {
    ReferenceNames names;
    names.predictors = session.design.names;
    for (const Region& region : session.regions) names.regions.push_back(region.name);
    return names;
}

void printSummary(const RunFacts& facts, const fs::path& out) {
    std::printf("\n%lld voxels x %d volumes analysed\n", static_cast<long long>(facts.voxels()),
                facts.functional->volumes);
    std::printf("%d of %d components found%s\n", facts.found(), facts.options->components(),
                facts.found() < facts.options->components() ? ": the others did not converge" : "");
    if (const auto kept = facts.log->retainedVariancePercent()) std::printf("%.2f %% of the variance kept\n", *kept);
    std::printf("%.1f s, of which %.1f s in the plug-in; at most %.0f MiB of memory\n", facts.secondsTotal,
                facts.secondsPlugin, static_cast<double>(facts.peakMemoryBytes) / 1048576.0);
    std::printf("result: %s\n", out.c_str());
}

} // namespace

ExitStatus runCommand(const RunOptions& options) {
    const Stopwatch total;
    const ImageHeader functional = readFunctionalHeader(options);
    Session session = makeSession(options, functional);
    const PluginLibrary library(options.plugin.empty() ? findPlugin() : options.plugin);
    ResultFolder folder(options.out, options.force);
    const fs::path stem = folder.path() / (resultStem(options.functional) + "_desc-ICA_");
    const auto file = [&](const char* ending) { return fs::path(stem).concat(ending); };

    const Stopwatch reading;
    session.series = readTimeSeries(functional);
    const double secondsReading = reading.seconds();
    if (!variesOverTime(session.series, session.mask)) {
        throw Failure(ExitStatus::kInput,
                      options.functional.string() +
                          " does not change over time in any voxel to be analysed; check the image" +
                          (session.mask.empty() ? "." : " and the mask."));
    }

    RunLog log(folder.path() / "log.txt", [&](const VolumeMaps& maps) {
        writeComponentImage(file("components.nii.gz"), maps, functional);
        writeMixingTable(file("mixing.tsv"), maps);
        writeMetricsTable(file("metrics.tsv"), maps, referenceNames(session));
        writeMetricsDescription(file("metrics.json"));
    });
    session.events = &log;
    const Stopwatch running;
    runPlugin(library, session, log, folder.path() / "plugin");

    RunFacts facts;
    facts.options = &options;
    facts.functional = &functional;
    facts.session = &session;
    facts.library = &library;
    facts.log = &log.facts();
    facts.pluginFolder = folder.path() / "plugin";
    facts.secondsReading = secondsReading;
    facts.secondsPlugin = running.seconds();
    facts.secondsTotal = total.seconds();
    facts.peakMemoryBytes = peakMemoryBytes();
    writeDecomposition(file("decomposition.json"), facts);
    const ExitStatus status = facts.found() < options.components() ? ExitStatus::kGaveUp : ExitStatus::kDone;
    writeStatus(folder.path() / "status.json", facts, status);
    addReport(folder.path(), resultStem(options.functional), session, functional);
    folder.commit();
    printSummary(facts, options.out);
    return status;
}

} // namespace zn
