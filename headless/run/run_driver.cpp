#include "headless/run/run_driver.h"

#include "headless/dimension/estimate_table.h"
#include "headless/host/product_threads.h"
#include "headless/result/bids_files.h"
#include "headless/result/component_image.h"
#include "headless/result/metrics_table.h"
#include "headless/result/mixing_table.h"
#include "headless/result/result_folder.h"
#include "headless/result/result_names.h"
#include "headless/text/text_file.h"
#include "headless/run/component_choice.h"
#include "headless/run/decomposition.h"
#include "headless/run/run_notes.h"
#include "headless/run/input_places.h"
#include "headless/run/memory_check.h"
#include "headless/run/plugin_library.h"
#include "headless/run/progress.h"
#include "headless/run/seeded_rand.h"
#include "headless/run/repeat_runs.h"
#include "headless/run/repetition_time.h"
#include "headless/run/run_inputs.h"
#include "headless/run/run_log.h"
#include "headless/run/run_mask.h"
#include "headless/run/run_plugin.h"
#include "headless/run/run_report.h"
#include "headless/run/stopwatch.h"

#include <cmath>
#include <cstdio>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

ReferenceNames referenceNames(const Session& session) {
    ReferenceNames names;
    names.predictors = session.design.names;
    for (const Region& region : session.regions) names.regions.push_back(region.name);
    return names;
}

Progress::Display displayOf(const RunControl& control) {
    return control.quiet || control.verbose ? Progress::Display::kNone : Progress::suitable();
}

void printSummary(const RunFacts& facts, const fs::path& out) {
    std::printf("%lld voxels x %d volumes analysed\n", static_cast<long long>(facts.voxels()),
                facts.session->series.volumes);
    std::printf("%d of %d components found%s", facts.found(), facts.options->components(),
                facts.found() < facts.options->components() ? ": the others did not converge" : "");
    if (facts.repeats) std::printf("; %d of %zu runs found all", facts.repeats->converged, facts.repeats->seeds.size());
    std::printf("\n");
    std::printf("%.2f %% of the variance kept\n", facts.log->retainedVariancePercent().value_or(NAN));
    std::printf("%.1f s, of which %.1f s in the plug-in; at most %.0f MiB of memory\n", facts.secondsTotal,
                facts.secondsPlugin, static_cast<double>(facts.peakMemoryBytes) / 1048576.0);
    std::printf("result: %s\n", out.c_str());
}

// On the standard error and with --quiet as well: the exit status alone does not say where to look.
void explainMissing(const RunFacts& facts, const fs::path& out) {
    std::fflush(stdout);
    std::fprintf(
        stderr,
        "znica: %d of %d components found; allow more iterations with --max-iterations or a larger change with "
        "--epsilon; the partial result is in %s.\n",
        facts.found(), facts.options->components(), out.c_str());
}

} // namespace

ExitStatus runCommand(const RunOptions& asked) {
    const Stopwatch total;
    RunOptions options = asked; // the number of components is settled on the way
    requireInputsOutsideResult(options);
    const ImageHeader functional = readFunctionalHeader(options);
    const RepetitionTime repetition = repetitionTime(options.secondsPerVolume, functional);
    Session session = makeSession(options, functional, repetition.seconds);
    InputNotes notes(options.control.quiet && !options.dryRun); // a dry run is asked for its notes
    notes.say(inputNote(options, functional, repetition));
    for (const std::string& disagreement : repetition.disagreements) notes.remark(disagreement);
    for (const std::string& note : bandNotes(session.millisecondsPerVolume)) notes.remark(note);
    const MemoryCheck memory(options, functional, session);
    const std::int64_t expected = expectedVoxels(options, functional, session);
    requireVoxelsForVolumes(options, expected, functional.volumes - options.dummyScans);
    notes.say(memory.note(expected));
    memory.requireEnough(expected);
    if (options.dryRun) return ExitStatus::kDone;

    const PluginLibrary library(options.plugin.empty() ? findPlugin() : options.plugin);
    ResultFolder folder(options.out, options.force);
    const fs::path stem = folder.path() / (resultStem(options.functional) + "_desc-ICA_");
    const auto file = [&](const char* ending) { return fs::path(stem).concat(ending); };

    if (options.control.keepPartial) ResultFolder::keepUnfinished();
    Progress progress(displayOf(options.control));

    const Stopwatch reading;
    progress.stage("reading");
    session.series = readTimeSeries(functional, options.dummyScans);
    const double secondsReading = reading.seconds();
    progress.clear();
    const RunMask mask = settleMask(options, session);
    for (const std::string& note : maskNotes(options, mask)) notes.say(note);
    memory.requireEnough(mask.count);
    writeMaskImage(folder.path() / (resultStem(options.functional) + "_desc-brain_mask.nii.gz"), mask, functional);
    std::optional<ComponentEstimate> estimate;
    if (options.componentCount == ComponentCount::kEstimated) {
        estimate = settleComponents(mask, options, session);
        notes.say(estimateNote(*estimate));
        writeEstimateTable(file("dimension.tsv"), *estimate);
    }

    double secondsWriting = 0.0;
    RunLog log(folder.path() / "log.txt", options.control.verbose, progress, [&](const VolumeMaps& maps) {
        const Stopwatch writing;
        progress.stage("writing");
        writeComponentImage(file("components.nii.gz"), maps, functional);
        writeMixingTable(file("mixing.tsv"), maps);
        secondsWriting = writing.seconds();
    });
    for (const std::string& note : notes.all()) log.keep(note);
    progress.expect(options.components());
    session.events = &log;
    setProductThreads(options.control.threads.value_or(productThreads()));
    const std::uint32_t seed = options.control.seed.value_or(freshSeed());
    beginRandomNumbers(seed);
    const Stopwatch running;
    runPlugin(library, session, log, folder.path() / "plugin");
    const double secondsFirstRun = running.seconds() - secondsWriting; // the maps are written while the plug-in waits

    std::optional<RepeatFacts> repeats;
    if (options.control.repeats > 1) {
        repeats = repeatRuns(library, session, options, seed, folder.path(), progress);
    }
    writeMetricsTable(file("metrics.tsv"), session.maps, referenceNames(session),
                      repeats ? repeats->stability : std::vector<Stability>());
    writeMetricsDescription(file("metrics.json"), referenceNames(session),
                            frequencyBands(session.millisecondsPerVolume), repeats.has_value());

    RunFacts facts;
    facts.repeats = repeats ? &*repeats : nullptr;
    facts.options = &options;
    facts.functional = &functional;
    facts.session = &session;
    facts.repetition = &repetition;
    facts.inputNotes = notes.remarks();
    facts.left = mask.left;
    facts.estimate = estimate ? &*estimate : nullptr;
    facts.predictedMemoryBytes = memory.predictedBytes(mask.count);
    facts.library = &library;
    facts.log = &log.facts();
    facts.pluginFolder = folder.path() / "plugin";
    facts.seed = seed;
    facts.threads = productThreads();
    facts.secondsReading = secondsReading;
    facts.secondsPlugin = secondsFirstRun + (repeats ? repeats->secondsPlugin : 0.0);
    facts.secondsWriting = secondsWriting;
    facts.secondsTotal = total.seconds();
    facts.peakMemoryBytes = peakMemoryBytes();
    writeDecomposition(file("decomposition.json"), facts);
    const ExitStatus status = facts.found() < options.components() ? ExitStatus::kGaveUp : ExitStatus::kDone;
    writeStatus(folder.path() / "status.json", facts, status);
    writeBidsFiles(folder.path(), ZNICA_VERSION, library.name(), library.version());
    if (options.control.report) addReport(folder.path(), resultStem(options.functional), session, functional);
    folder.commit();
    progress.clear();
    facts.secondsTotal = total.seconds(); // the page comes after what it shows
    facts.peakMemoryBytes = peakMemoryBytes();
    if (!options.control.quiet) printSummary(facts, options.out);
    if (status != ExitStatus::kDone) explainMissing(facts, options.out);
    return status;
}

} // namespace zn::headless
