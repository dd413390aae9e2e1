#include "headless/run/stages.h"

#include "headless/failure/failure.h"
#include "headless/nifti/image_writer.h"
#include "headless/result/course_tables.h"
#include "headless/run/plugin_files.h"
#include "headless/run/run_plugin.h"
#include "headless/run/seeded_rand.h"

namespace zn::headless {

namespace {

double writeComponentImage(const Run& run, const VolumeMaps& maps, int threads) {
    const Stopwatch writing;
    ImageWriter::Layout layout;
    layout.volumes = static_cast<int>(maps.maps().size());
    layout.description = "ICA component maps";
    layout.threads = threads;
    ImageWriter writer((*run.files)[ResultFile::kComponents], *run.functional.image, layout);
    for (const VolumeMap& map : maps.maps()) writer.write(map.values);
    writer.close();
    return writing.seconds();
}

// The image is compressed while the rest of the run goes on.
void writeMaps(Run& run, const VolumeMaps& maps) {
    const Stopwatch writing;
    run.progress.stage("writing");
    writeMixingTable((*run.files)[ResultFile::kMixing], maps);
    run.seconds.writing = writing.seconds();
    const int threads = run.products->team().threads();
    // With both policies the standard library defers the work when it cannot start a thread.
    run.mapsWriting = std::async(threads == 1 ? std::launch::deferred : std::launch::async | std::launch::deferred,
                                 [&run, &maps, threads] { return writeComponentImage(run, maps, threads); });
}

void setEigenvalueRange(DialogFields& dialog, const EigenvalueRange& range) {
    dialog.integers[6] = range.first;
    dialog.integers[7] = range.last;
    dialog.integers[9] = range.count();
}

void requireApproach(const Run& run, const SymmetricSeparator& separator) {
    if (!run.options.approachRequested || run.options.approach == Approach::kDeflation || separator.facts()) return;
    throw Failure(ExitStatus::kInput,
                  run.library->file().string() + " does not let znica find the components; use --approach deflation.");
}

} // namespace

void finishMaps(Run& run) {
    if (run.mapsWriting.valid()) run.seconds.writing += run.mapsWriting.get();
}

void separate(Run& run) {
    const RunControl& control = run.options.control;
    run.log.emplace((*run.files)[ResultFile::kLog], control.verbose, run.progress,
                    [&run](const VolumeMaps& maps) { writeMaps(run, maps); }, run.unfinished);
    for (const std::string& note : run.notes.all()) run.log->keep(note);
    run.progress.expect(run.eigenvalues.count());
    run.products.emplace(MatrixProducts::threadsFor(control.threads));
    run.session.products = &*run.products;
    run.session.events = &*run.log;
    setEigenvalueRange(run.session.dialog, run.eigenvalues);
    run.seed = control.seed.value_or(freshSeed());
    beginRandomNumbers(run.seed);
    SymmetricSeparator separator(run.products->team(), *run.log, run.progress, run.options.starts, run.seed);
    if (run.options.approach == Approach::kSymmetric) run.session.separator = &separator;
    const Stopwatch running;
    runPlugin(*run.library, run.session, *run.log, (*run.files)[ResultFile::kPluginFolder]);
    run.session.separator = nullptr;
    requireApproach(run, separator);
    run.symmetric = separator.facts();
    run.seconds.plugin = running.seconds() - run.seconds.writing;
    requireCompletePluginFiles(run);
}

} // namespace zn::headless
