#include "headless/cli/group_of_study.h"

#include <set>
#include <string>

namespace zn::headless {

namespace {

[[noreturn]] void refuse(const std::string& option, const char* why) {
    throw CLI::ValidationError(option, why);
}

void requireMeaning(const CLI::App& command, const std::vector<const CLI::Option*>& analysis) {
    const std::set<std::string> shared = {"mask",   "tr",     "smooth",         "high-pass", "scale",
                                          "starts", "plugin", "max-iterations", "seed",      "repeats"};
    for (const CLI::Option* option : analysis) {
        const std::string name = option->get_lnames().front();
        if (name == "components" && option->count() > 0) refuse("--components", "is --ica for a group analysis");
        if (option->count() > 0 && !shared.contains(name)) refuse("--" + name, "has no meaning for a group analysis");
    }
    for (const char* option : {"--confounds", "--memory", "--mem"}) {
        if (command.count(option) > 0) refuse(option, "has no meaning for a group analysis");
    }
}

PreparationOptions preparationOf(const CLI::App& command, const PreparationOptions& given, PreparationOptions usual) {
    if (given.smoothIfNeeded && command.count("--smooth") > 0) {
        refuse("--smooth", "needs a width in mm: auto could differ between runs");
    }
    usual.smoothMm = given.smoothMm;
    if (command.count("--high-pass") > 0) usual.highPassSeconds = given.highPassSeconds;
    if (command.count("--scale") > 0) usual.scaling = given.scaling;
    return usual;
}

} // namespace

GroupOptions groupOfStudy(const CLI::App& command, const std::vector<const CLI::Option*>& analysis,
                          const StudyOptions& study) {
    requireMeaning(command, analysis);
    const RunOptions& run = study.run;
    if (run.maskSource == MaskSource::kNone) refuse("--mask", "needs a file or auto for a group analysis");
    if (study.dummyScansFromConfounds) refuse("--dummy-scans", "needs a number: all runs of a group omit the same");
    GroupOptions group;
    group.folder = study.out / "group";
    group.componentsOption = "--ica";
    group.mask = run.mask;
    group.secondsPerVolume = run.secondsPerVolume;
    group.dummyScans = run.dummyScans;
    group.preparation = preparationOf(command, run.preparation, group.preparation);
    if (command.count("--repeats") > 0) group.repeats = run.control.repeats;
    group.starts = run.starts;
    group.maxIterations = run.maxIterations;
    group.seed = run.control.seed.value_or(group.seed);
    group.plugin = run.plugin;
    group.threads = run.control.threads ? run.control.threads : study.processors;
    group.force = study.rerun == Rerun::kAll;
    group.quiet = run.control.quiet;
    return group;
}

} // namespace zn::headless
