#include "headless/cli/commands.h"

#include "headless/cli/number_checks.h"
#include "headless/result/result_folder.h"
#include "headless/simulate/write_group_sample.h"
#include "headless/simulate/write_sample.h"

#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

namespace zn::headless {

namespace {

struct SimulateCommand {
    SimulateOptions sample;
    std::filesystem::path out;
    int subjects = 1;
    bool force = false;
};

ExitStatus simulateStudy(const SimulateCommand& options, UnfinishedWork& unfinished) {
    ResultFolder folder(unfinished, options.out, ResultKind::kSample, options.force);
    const GroupSample group = makeGroupSample(options.sample, options.subjects);
    writeGroupSample(ResultFiles(folder.path(), kSampleStem), group, options.sample);
    folder.commit();
    const Brain& brain = group.shared.brain;
    std::printf("%d subjects, %d sources in %lld voxels x %d volumes each: %s\n", options.subjects,
                options.sample.sources, static_cast<long long>(brain.voxelsInside()), brain.volumes,
                options.out.c_str());
    return ExitStatus::kDone;
}

ExitStatus simulate(const SimulateCommand& options, UnfinishedWork& unfinished) {
    ResultFolder folder(unfinished, options.out, ResultKind::kSample, options.force);
    const Sample sample = makeSample(options.sample);
    writeSample(ResultFiles(folder.path(), kSampleStem), sample, options.sample);
    folder.commit();
    std::printf("%d sources in %lld voxels x %d volumes: %s\n", static_cast<int>(sample.sources.size()),
                static_cast<long long>(sample.brain.voxelsInside()), sample.brain.volumes, options.out.c_str());
    return ExitStatus::kDone;
}

} // namespace

const char kSimulateExamples[] = "Example:\n"
                                 "  znica simulate --out sample\n"
                                 "  znica run sample/sub-sim_task-blocks_bold.nii.gz --out ica\n"
                                 "  znica score ica --truth sample\n";

void addSimulateCommand(CLI::App& app, Action& action) {
    const auto options = std::make_shared<SimulateCommand>();
    SimulateOptions& o = options->sample;
    auto* command = app.add_subcommand("simulate", "Create a brain-shaped sample with known sources.");
    command->add_option("--out", options->out, "folder to create for the sample")->required()->type_name("DIR");
    command->add_option("--size", o.size, "tiny, small, medium or large (small: 22,000 voxels, 150 volumes)")
        ->check(CLI::IsMember(SimulateOptions::sizeNames()).description(""))
        ->type_name("NAME");
    command->add_option("--sources", o.sources, "number of sources, 1 to 24 (8)")
        ->check(CLI::Range(1, 24).description(""))
        ->type_name("N");
    command->add_option("--noise", o.noisePercent, "noise as a percentage of the mean signal (1)")
        ->check(finiteNumber("a number from 0 to 100", [](double s) { return s >= 0.0 && s <= 100.0; }))
        ->type_name("S");
    command->add_option("--seed", o.seed, "seed of the random numbers (1)")
        ->check(wholeNumber(std::numeric_limits<std::uint64_t>::max()))
        ->type_name("N");
    command->add_option("--subjects", options->subjects, "subjects of a study, as a BIDS dataset (1: one run)")
        ->check(CLI::Range(1, 999).description(""))
        ->type_name("N");
    command->add_flag("--force", options->force, "replace an earlier sample in DIR");
    command->footer(std::string("Defaults are in parentheses.\n") + kSimulateExamples);
    command->callback([options, &action] {
        action = [options](UnfinishedWork& unfinished) {
            return options->subjects > 1 ? simulateStudy(*options, unfinished) : simulate(*options, unfinished);
        };
    });
}

} // namespace zn::headless
