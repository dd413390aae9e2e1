#include "headless/cli/commands.h"

#include "headless/cli/group_components.h"
#include "headless/cli/help_pages.h"
#include "headless/cli/number_checks.h"
#include "headless/cli/preparation_options.h"
#include "headless/group/steps/group_driver.h"
#include "headless/group/steps/run_list.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr char kFooter[] = "Steps, one after another with all: plan, reduce, merge, ica, back, report.\n"
                           "What is up to date is not repeated; all without images continues a planned study.\n"
                           "Defaults are in parentheses.\n"
                           "Examples:\n"
                           "  znica group all study sub-*_bold.nii.gz --components 20\n"
                           "  znica group plan study --runs runs.tsv; znica group reduce study --batch 1/4\n";

struct GroupCommand {
    GroupOptions options;
    std::string step;
    std::vector<fs::path> images;
    fs::path table;
};

// The steps to which the options of one of them are limited; "all" accepts every option but those of a part.
const std::map<std::string, std::string> kStepOf = {
    {"--runs", "plan"},      {"--mask", "plan"},      {"--tr", "plan"},    {"--dummy-scans", "plan"},
    {"--smooth", "plan"},    {"--high-pass", "plan"}, {"--scale", "plan"}, {"--batch", "reduce"},
    {"--components", "ica"}, {"--repeats", "ica"},    {"--starts", "ica"}, {"--max-iterations", "ica"},
    {"--seed", "ica"},       {"--plugin", "ica"},     {"--only", "back"}};

// Without images, `all` continues the study as it was planned.
void requireNoPlanOption(const CLI::App& command) {
    for (const auto& [option, step] : kStepOf) {
        if (step != "plan" || command.count(option) == 0) continue;
        throw CLI::ValidationError(option,
                                   "belongs to a new plan; list its images, or give them in a table with --runs");
    }
}

void requireOptionsOfStep(const CLI::App& command, const GroupCommand& c) {
    for (const auto& [option, step] : kStepOf) {
        if (command.count(option) == 0 || step == c.step) continue;
        const bool part = option == "--batch" || option == "--only";
        if (c.step == "all" && !part) continue;
        throw CLI::ValidationError(option, "belongs to the step " + step + ", not to " + c.step);
    }
    const bool plans = c.step == "plan" || c.step == "all";
    if (!plans && !c.images.empty()) {
        throw CLI::ValidationError("IMAGE", "images are listed with the steps plan and all, not with " + c.step);
    }
    const bool continues = c.step == "all" && c.images.empty() && c.table.empty();
    if (continues) requireNoPlanOption(command);
    if (plans && !continues && c.images.empty() == c.table.empty()) {
        throw CLI::ValidationError("--runs", "list the runs either as images or in a table with --runs");
    }
    if (c.options.preparation.smoothIfNeeded) {
        throw CLI::ValidationError("--smooth", "needs a width in mm: auto could differ between runs");
    }
}

bool parseWhole(std::string_view text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

void setBatch(Batch& batch, const std::string& text) {
    const std::size_t slash = text.find('/');
    const bool valid =
        slash != std::string::npos && parseWhole(std::string_view(text).substr(0, slash), batch.number) &&
        parseWhole(std::string_view(text).substr(slash + 1), batch.of) && batch.number >= 1 && batch.number <= batch.of;
    if (!valid) throw CLI::ValidationError("--batch", "needs I/N with I from 1 to N, such as 2/4; got " + text);
}

void addPlanOptions(CLI::App& command, GroupCommand& c) {
    GroupOptions& o = c.options;
    command.add_option("--runs", c.table, "table of the runs: columns image, name, mask")->type_name("TSV");
    command.add_option("--mask", o.mask, "mask of runs without one (from the mean image)")->type_name("NIFTI");
    command.add_option("--tr", o.secondsPerVolume, "repetition time (from the image)")
        ->check(finiteNumber("seconds from 0.001 to 20", [](double s) { return s >= 0.001 && s <= 20.0; }))
        ->type_name("SECONDS");
    command.add_option("--dummy-scans", o.dummyScans, "omit the first N volumes (0)")
        ->check(wholeNumber(1000000))
        ->type_name("N");
    addPreparationOptions(command, o.preparation);
    command.get_option("--smooth")->description("Gaussian within the mask, FWHM (0)")->type_name("MM");
    command.get_option("--high-pass")->description("remove drifts slower than this; 0: none (128)");
    command.get_option("--scale")->description("none, percent of the mean, or sd (percent)");
}

void addStepOptions(CLI::App& command, GroupOptions& o) {
    command
        .add_option_function<std::string>(
            "--batch", [&o](const std::string& text) { setBatch(o.batch, text); },
            "reduce: part I of N of the runs (1/1)")
        ->type_name("I/N");
    addGroupComponents(command, "--components", "ica: components to extract; auto: estimated (20)", o.components);
    command.add_option("--repeats", o.repeats, "ica: runs of the plug-in, for stability (10)")
        ->check(CLI::Range(1, 1000).description(""))
        ->type_name("R");
    command.add_option("--starts", o.starts, "ica: random starts of each (3)")
        ->check(CLI::Range(1, 1000).description(""))
        ->type_name("N");
    command.add_option("--max-iterations", o.maxIterations, "ica: restart after N iterations (500)")
        ->check(CLI::Range(1, 100000000).description(""))
        ->type_name("N");
    command.add_option("--seed", o.seed, "ica: random seed (1)")
        ->check(wholeNumber(std::numeric_limits<std::uint32_t>::max()))
        ->type_name("N");
    command.add_option("--plugin", o.plugin, "ica: plug-in file (the one beside this command)")->type_name("FILE");
    command.add_option("--only", o.only, "back: this run; may be repeated (all)")->type_name("NAME");
}

ExitStatus perform(const GroupCommand& c, UnfinishedWork& unfinished) {
    const GroupOptions& options = c.options;
    if (c.step == "all") return analyseGroup(options, unfinished);
    if (c.step == "ica") return separateGroup(options, unfinished);
    const std::map<std::string, void (*)(const GroupOptions&, UnfinishedWork&)> steps = {{"plan", planStudyOfGroup},
                                                                                         {"reduce", reduceBatch},
                                                                                         {"merge", mergeBatches},
                                                                                         {"back", regressRuns},
                                                                                         {"report", writeGroupTables}};
    steps.at(c.step)(options, unfinished);
    return ExitStatus::kDone;
}

ExitStatus listAndPerform(GroupCommand& c, UnfinishedWork& unfinished) {
    if (!c.table.empty()) c.options.runs = readRunList(c.table);
    for (const fs::path& image : c.images) c.options.runs.push_back(listedRun(image));
    return perform(c, unfinished);
}

} // namespace

void addGroupCommand(CLI::App& app, Action& action) {
    const auto shared = std::make_shared<GroupCommand>();
    GroupCommand& c = *shared;
    auto* command = app.add_subcommand("group", "Analyse several runs together: group components, each run's share.");
    command->add_option("STEP", c.step, "plan, reduce, merge, ica, back, report or all")
        ->required()
        ->check(CLI::IsMember({"plan", "reduce", "merge", "ica", "back", "report", "all"}).description(""));
    command->add_option("DIR", c.options.folder, "folder of the study")->required();
    command->add_option("IMAGE", c.images, "plan: 4D images of the runs, in one space");
    addPlanOptions(*command, c);
    addStepOptions(*command, c.options);
    command->add_option("--threads", c.options.threads, "threads (all)")
        ->check(CLI::Range(1, 1024).description(""))
        ->type_name("N");
    command->add_flag("--force", c.options.force, "repeat what is up to date");
    command->add_flag("--quiet", c.options.quiet, "print only errors");
    command->footer(kFooter);
    command->parse_complete_callback([command, &c] { requireOptionsOfStep(*command, c); });
    command->callback([shared, &action] {
        action = [shared](UnfinishedWork& unfinished) { return listAndPerform(*shared, unfinished); };
    });
}

} // namespace zn::headless
