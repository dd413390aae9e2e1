#include "preview.h"

#include "headless/cli/analysis_options.h"
#include "headless/nifti/time_series.h"
#include "headless/report/mean_image.h"
#include "headless/run/stages.h"
#include "headless/text/text_file.h"

#include <filesystem>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

std::string_view textOf(const std::vector<unsigned char>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string factsOf(const Run& run) {
    const ImageHeader& image = run.functional;
    const nlohmann::ordered_json facts = {{"size", image.size},
                                          {"voxel_to_mm", image.affine},
                                          {"oriented", image.oriented},
                                          {"volumes", run.volumes},
                                          {"tr_seconds", run.repetition.seconds},
                                          {"tr_source", run.repetition.source},
                                          {"voxels", run.mask.count},
                                          {"voxels_excluded", run.mask.excluded.all()},
                                          {"needed_bytes", run.predictedBytes},
                                          {"available_bytes", run.budgetBytes.value_or(0)},
                                          {"notes", run.notes.all()}};
    return facts.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

ExitStatus preview(const RunOptions& options, UnfinishedWork& unfinished) {
    Run run(options, unfinished); // without the files of a result
    readInputs(run);
    checkBudget(run);
    run.session.series = readTimeSeries(run.functional, options.dummyScans, run.options.preparation.any());
    WorkerThreads alone(1);
    const VoxelSummary summary = summariseVoxels(run.session.series, alone);
    settleMask(run);
    requireMemory(run, run.mask.count);

    std::filesystem::create_directory(options.out);
    writeTextFile(options.out / "mean", textOf(greyLevels(summary.mean)));
    writeTextFile(options.out / "mask", textOf(run.mask.voxels));
    writeTextFile(options.out / "facts.json", factsOf(run));
    return ExitStatus::kDone;
}

} // namespace

void addPreviewCommand(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RunOptions>();
    auto* command = app.add_subcommand("preview", "Read and check the input of a run, up to the mask.");
    command->add_option("BOLD", options->functional)->required();
    command->add_option("--out", options->out)->required();
    addAnalysisOptions(*command, *options);
    command->callback([options, &action] {
        action = [options](UnfinishedWork& unfinished) { return preview(*options, unfinished); };
    });
}

} // namespace zn::headless
