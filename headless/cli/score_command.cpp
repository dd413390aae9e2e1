#include "headless/cli/commands.h"

#include "headless/cli/standard_output.h"
#include "headless/result/result_names.h"
#include "headless/simulate/recovery.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace zn::headless {

namespace {

struct ScoreCommand {
    std::filesystem::path result;
    std::filesystem::path truth;
};

// Another source whose map the same component resembles more.
std::string sharedWith(const std::vector<SourceScore>& scores, const SourceScore& score) {
    for (const SourceScore& other : scores) {
        const bool same = score.recovery.component >= 0 && other.recovery.component == score.recovery.component;
        if (same && other.recovery.correlation > score.recovery.correlation) {
            return "  (also the component of " + other.name + ", more similar)";
        }
    }
    return "";
}

ExitStatus score(const ScoreCommand& options) {
    const auto scores = scoreResult(options.result, options.truth);
    std::printf("%-16s %-10s %s\n", "source", "component", "|r| of the maps");
    double worst = 1.0;
    for (const SourceScore& row : scores) {
        const Recovery& recovery = row.recovery;
        const std::string component = recovery.component < 0 ? "none" : componentName(recovery.component);
        std::printf("%-16s %-10s %.4f%s\n", row.name.c_str(), component.c_str(), recovery.correlation,
                    sharedWith(scores, row).c_str());
        worst = std::min(worst, recovery.correlation);
    }
    std::printf("lowest: %.4f\n", worst);
    requirePrinted();
    return ExitStatus::kDone;
}

} // namespace

void addScoreCommand(CLI::App& app, Action& action) {
    const auto options = std::make_shared<ScoreCommand>();
    auto* command = app.add_subcommand("score", "Print how well a result recovers the sources of a simulated sample.");
    command->add_option("RESULT", options->result, "folder created by znica run")->required()->type_name("DIR");
    command->add_option("--truth", options->truth, "folder created by znica simulate")->required()->type_name("DIR");
    command->footer(kSimulateExamples);
    command->callback([options, &action] { action = [options](UnfinishedWork&) { return score(*options); }; });
}

} // namespace zn::headless
