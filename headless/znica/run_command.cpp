#include "headless/znica/run_command.h"

#include "headless/host/current_session.h"
#include "headless/report/mean_image.h"
#include "headless/report/report_page.h"
#include "headless/report/write_report.h"
#include "headless/result/component_image.h"
#include "headless/result/design_table.h"
#include "headless/result/metrics_table.h"
#include "headless/result/mixing_table.h"
#include "headless/result/result_folder.h"
#include "headless/result/result_names.h"
#include "headless/result/text_file.h"
#include "headless/znica/decomposition.h"
#include "headless/znica/plugin_library.h"
#include "headless/znica/run_inputs.h"
#include "headless/znica/run_log.h"
#include "headless/znica/stopwatch.h"

#include <cstdio>

#include <nlohmann/json.hpp>

namespace zn {

namespace {

namespace fs = std::filesystem;

ReferenceNames referenceNames(const Session& session) {
    ReferenceNames names;
    names.predictors = session.design.names;
    for (const Region& region : session.regions) names.regions.push_back(region.name);
    return names;
}

// The plug-in writes its own files into the current folder, so it runs in one made for them.
class CurrentFolder {
public:
    explicit CurrentFolder(const fs::path& folder) : before_(fs::current_path()) {
        fs::create_directory(folder);
        fs::current_path(folder);
    }
    ~CurrentFolder() {
        std::error_code ignored;
        fs::current_path(before_, ignored);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    fs::path before_;
};

class AttachedSession {
public:
    explicit AttachedSession(Session& session) { attachSession(&session); }
    ~AttachedSession() { attachSession(nullptr); }
    AttachedSession(const AttachedSession&) = delete;
    AttachedSession& operator=(const AttachedSession&) = delete;
};

// Why there are no maps, in the words that the plug-in had for the user.
[[noreturn]] void explainEarlyEnd(const RunLog& log, bool initialised) {
    const std::string said = log.messages().empty() ? "" : log.messages().back();
    if (log.facts().ranOutOfMemory()) {
        throw Failure(ExitStatus::kMemory,
                      "the plug-in ran out of memory (\"" + said + "\"); use a mask, or ask for fewer components.");
    }
    if (log.facts().foundNone()) {
        throw Failure(ExitStatus::kGaveUp, "no component converged; allow more iterations with --max-iterations or a "
                                           "larger change with --epsilon.");
    }
    if (!initialised)
        throw Failure(ExitStatus::kOther, "the plug-in did not start: " + (said.empty() ? "it gave no reason." : said));
    throw Failure(ExitStatus::kInput, "the plug-in ended the analysis: " +
                                          (said.empty() ? "it gave no reason; see its lines above." : said));
}

void runPlugin(const PluginLibrary& library, Session& session, const RunLog& log, const fs::path& folder) {
    const AttachedSession attached(session);
    const CurrentFolder current(folder);
    const auto plugin = library.create();
    const bool initialised = plugin->initPlugin();
    const bool ended = initialised && plugin->execute();
    if (session.failure) std::rethrow_exception(session.failure);
    if (!ended || !log.mapsSaved()) explainEarlyEnd(log, initialised);
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
    writeMeanImage(folder.path() / (resultStem(options.functional) + "_desc-mean_bold.nii.gz"), session.series,
                   functional);
    if (!session.design.names.empty()) writeDesignTable(file("design.tsv"), session.design);

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
    if (findReportTemplate().empty()) {
        std::fprintf(stderr, "znica: no report is written, because its template is not installed.\n");
    } else {
        writeReport(folder.path());
    }
    folder.commit();
    printSummary(facts, options.out);
    return status;
}

} // namespace zn
