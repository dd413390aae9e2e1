#include "headless/cli/commands.h"

#include "headless/cli/absolute_path.h"
#include "headless/cli/analysis_options.h"
#include "headless/cli/forwarded_options.h"
#include "headless/cli/group_components.h"
#include "headless/cli/group_of_study.h"
#include "headless/cli/help_pages.h"
#include "headless/cli/standard_output.h"
#include "headless/cli/study_options.h"
#include "headless/group/steps/group_driver.h"
#include "headless/result/old_foreign_work.h"
#include "headless/study/list_runs.h"
#include "headless/study/run_study.h"
#include "headless/study/runs_together.h"
#include "headless/study/write_overview.h"
#include "headless/text/byte_sizes.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <optional>
#include <set>

namespace zn::headless {

namespace {

constexpr char kBidsFooter[] = "All options of znica run (see --help-all) apply to every run.\n"
                               "Examples:\n"
                               "  znica bids data out participant --task rest --components auto\n"
                               "  znica bids data out participant -d fmriprep --space MNI152NLin2009cAsym \\\n"
                               "      --design auto --confounds auto --dummy-scans confounds\n"
                               "  znica bids data out participant --labels-dir labels --denoise nonaggr\n"
                               "  znica bids data out group\n"
                               "  znica bids data out group --ica 20\n";

struct BidsCommand {
    StudyOptions options;
    std::string level;
    bool list = false;
    bool together = false;         // a group analysis
    std::optional<int> components; // nothing: estimated
    GroupOptions group;
    std::vector<const CLI::Option*> shared; // with `znica run`, and passed on
};

void setDummyScans(StudyOptions& options, const std::string& text) {
    options.dummyScansFromConfounds = text == "confounds";
    if (options.dummyScansFromConfounds) return;
    constexpr int kMost = 1000000;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), options.run.dummyScans);
    const bool all = error == std::errc() && end == text.data() + text.size();
    if (all && options.run.dummyScans >= 0 && options.run.dummyScans <= kMost) return;
    throw CLI::ValidationError("--dummy-scans", "needs a number from 0, or confounds; got " + text);
}

void setConfounds(StudyOptions& options, const std::string& text) {
    if (text != "auto") {
        throw CLI::ValidationError("--confounds", "needs auto, which takes each run's own table; got " + text);
    }
    options.confoundsFromDerivatives = true;
}

// The options of `znica run` for which a study has its own meaning or none.
void replaceOptions(CLI::App& command, StudyOptions& o) {
    for (const char* name : {"--dry-run", "--dummy-scans", "--confounds", "--verbose", "--keep-partial"}) {
        command.remove_option(command.get_option(name));
    }
    command
        .add_option_function<std::string>(
            "--dummy-scans", [&o](const std::string& text) { setDummyScans(o, text); },
            "omit the first N volumes; confounds: as many as fMRIPrep found (0)")
        ->type_name("N|confounds");
    command
        .add_option_function<std::string>(
            "--confounds", [&o](const std::string& text) { setConfounds(o, text); },
            "compare time courses with each run's confounds")
        ->type_name("auto");
}

void addShared(CLI::App& command, BidsCommand& c) {
    RunOptions& run = c.options.run;
    const auto before = command.get_options();
    addAnalysisOptions(command, run);
    addControlOptions(command, run.control);
    replaceOptions(command, c.options);
    const std::set<std::string> own = {"--threads", "--memory", "--quiet", "--dummy-scans", "--confounds"};
    const std::set<std::string> usual = {"--components", "--design", "--seed", "--dummy-scans", "--confounds"};
    for (CLI::Option* option : command.get_options()) {
        if (std::find(before.begin(), before.end(), option) != before.end()) continue;
        const std::string name = "--" + option->get_lnames().front();
        if (!own.contains(name)) c.shared.push_back(option);
        if (!usual.contains(name)) option->group(kRareOptions);
    }
}

// `--design auto` is settled for each run.
std::vector<std::string> forwarded(const BidsCommand& c) {
    std::vector<const CLI::Option*> options = c.shared;
    std::erase_if(options, [&](const CLI::Option* option) {
        return c.options.run.designBesideImage && option->check_lname("design");
    });
    return forwardedOptions(options);
}

void settleGroup(const CLI::App& command, BidsCommand& c) {
    c.together = command.count("--ica") > 0;
    if (!c.together) return;
    if (c.level != "group") throw CLI::ValidationError("--ica", "belongs to the level group");
    c.group = groupOfStudy(command, c.shared, c.options);
    c.group.components = c.components;
}

void settle(const CLI::App& command, BidsCommand& c) {
    StudyOptions& o = c.options;
    o.dataset = absolutePath(o.dataset);
    o.out = absolutePath(o.out);
    o.maskGiven = command.count("--mask") > 0;
    o.runArguments = forwarded(c);
    if (o.run.memoryGib) o.memoryBytes = static_cast<std::int64_t>(std::min(*o.run.memoryGib, 1e9) * kBytesPerGib);
    settleGroup(command, c);
    for (const char* ignored : {"--work-dir", "--skip-bids-validation"}) {
        if (command.count(ignored) > 0) std::fprintf(stderr, "znica: %s has no effect.\n", ignored);
    }
}

StudyPlan planOf(const BidsCommand& c) {
    StudyPlan plan = planStudy(c.options);
    for (const std::string& note : plan.notes) std::fprintf(stderr, "znica: %s\n", note.c_str());
    return plan;
}

// Not by the jobs of a cluster, each of which would say the same.
void sayOldForeignWork(const StudyOptions& options) {
    const std::string note = options.selection.only.empty() ? noteOnOldForeignWork(options.out) : "";
    if (!note.empty()) std::fprintf(stderr, "znica: %s\n", note.c_str());
}

ExitStatus participants(const BidsCommand& c, UnfinishedWork& unfinished) {
    const StudyPlan plan = planOf(c);
    if (c.list) {
        listRuns(plan, c.options);
        requirePrinted();
        return ExitStatus::kDone;
    }
    sayOldForeignWork(c.options);
    return runStudy(plan, c.options, unfinished);
}

ExitStatus together(const BidsCommand& c, UnfinishedWork& unfinished) {
    const StudyPlan plan = planOf(c);
    if (c.list) {
        listRunsTogether(plan, c.options);
        requirePrinted();
        return ExitStatus::kDone;
    }
    const StudyFolder study(c.options.out);
    GroupOptions options = c.group;
    options.runs = runsTogether(plan, study);
    study.prepare(c.options);
    const ExitStatus status = analyseGroup(options, unfinished);
    refreshOverview(c.options.out); // leads to the page of the group analysis
    return status;
}

ExitStatus overview(const BidsCommand& c) {
    sayOldForeignWork(c.options);
    std::printf("%s\n", writeOverview(c.options.out).c_str());
    return ExitStatus::kDone;
}

} // namespace

void addBidsCommand(CLI::App& app, Action& action) {
    const auto c = std::make_shared<BidsCommand>();
    auto* bids = app.add_subcommand("bids", "Analyse every run of a BIDS dataset (participant); show all (group).");
    bids->add_option("BIDS_DIR", c->options.dataset, "dataset, or preprocessed derivatives")->required();
    bids->add_option("OUT_DIR", c->options.out, "folder for the results")->required();
    bids->add_option("LEVEL", c->level,
                     "participant: analyse; group: overview of all results, or with --ica a group analysis")
        ->required()
        ->check([](const std::string& text) {
            return text == "participant" || text == "group" ? "" : "needs participant or group; got " + text;
        });
    addShared(*bids, *c);
    addSelectionOptions(*bids, c->options);
    addDenoisingOptions(*bids, c->options);
    addSchedulingOptions(*bids, c->options);
    addGroupComponents(*bids, "--ica", "group: components of all runs together; auto: estimated", c->components);
    bids->add_flag("--list", c->list, "print the runs with TR and memory, then exit");
    bids->set_help_all_flag("--help-all", "also list options that are rarely needed");
    bids->footer(kBidsFooter);
    bids->callback([bids, c, &action] {
        settle(*bids, *c);
        action = [c](UnfinishedWork& unfinished) {
            if (c->level == "participant") return participants(*c, unfinished);
            return c->together ? together(*c, unfinished) : overview(*c);
        };
    });
}

} // namespace zn::headless
