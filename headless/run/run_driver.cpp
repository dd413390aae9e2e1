#include "headless/run/run_driver.h"

#include "headless/nifti/time_series.h"
#include "headless/result/old_foreign_work.h"
#include "headless/result/result_names.h"
#include "headless/run/stages.h"

namespace zn::headless {

namespace {

constexpr double kUnlimitedGib = 1e9;

Progress::Display displayOf(const RunControl& control) {
    return control.quiet || control.verbose ? Progress::Display::kNone : Progress::suitable();
}

void openResult(Run& run) {
    const RunOptions& options = run.options;
    run.library.emplace(options.plugin.empty() ? findPlugin() : options.plugin);
    run.folder.emplace(run.unfinished, options.out, ResultKind::kRun, options.force);
    const std::string note = noteOnOldForeignWorkFor(options.out);
    if (!note.empty()) run.notes.say(note);
    run.files.emplace(run.folder->path(), resultStem(options.functional));
    run.files->requireShortNames();
    if (options.control.keepPartial) run.unfinished.keep();
}

void readSeries(Run& run) {
    const Stopwatch reading;
    run.progress.stage("reading");
    const bool asFloat = run.options.preparation.any();
    run.session.series = readTimeSeries(run.functional, run.options.dummyScans, asFloat, neededVoxels(run));
    run.seconds.reading = reading.seconds();
    run.progress.clear();
}

} // namespace

// A dry run is made for its notes, so they are printed even with --quiet.
Run::Run(const RunOptions& given, UnfinishedWork& work)
    : options(given), unfinished(work), notes(given.control.quiet && !given.dryRun), progress(displayOf(given.control)),
      eigenvalues(given.eigenvalues) {}

ExitStatus runAnalysis(const RunOptions& options, UnfinishedWork& unfinished) {
    Run run(options, unfinished);

    readInputs(run);  // headers, TR, mask, design and regions -> session
    checkBudget(run); // memory and voxels, before anything large is read
    if (options.dryRun) return ExitStatus::kDone;

    openResult(run);         // the plug-in's file, the hidden folder
    readSeries(run);         // image -> series (voxels x volumes)
    settleMask(run);         // the voxels to analyse -> mask, mean image
    prepareSeries(run);      // smoothing, high-pass filter, scaling -> series
    useMask(run);            // mask -> session, its image
    settleComponents(run);   // --components auto -> range of eigenvalues, table of criteria
    separate(run);           // the plug-in -> maps, time courses, parameters, log
    repeatSeparation(run);   // --repeats: the plug-in again -> stability
    measureComponents(run);  // maps, series -> time courses in the data's units, explained variance
    return writeResult(run); // tables, record, report; the folder takes its name
}

RunForecast forecastRun(const RunOptions& options) {
    RunOptions quiet = options;
    quiet.dryRun = false;
    quiet.control.quiet = true;
    quiet.memoryGib = kUnlimitedGib;
    UnfinishedWork nothing;
    Run run(quiet, nothing);
    readInputs(run);
    checkBudget(run);
    return {run.repetition.seconds, run.volumes, run.predictedBytes};
}

} // namespace zn::headless
