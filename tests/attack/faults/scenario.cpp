#include "attack/faults/scenario.h"

#include "cli/nifti_bytes.h"

#include <sstream>
#include <stdexcept>

namespace zn::test {

namespace {

using Arguments = std::vector<std::string>;

// As small as a run can be: 24 volumes of 120 voxels, two components after the fewest iterations.
Arguments smallRun(const Arguments& options) {
    Arguments arguments = {"run", "@/bold.nii.gz", "--components", "2", "--epsilon", "0.9", "--threads", "1"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

std::string designTable() {
    std::string text = "task\n";
    for (int t = 0; t < 24; ++t) text += std::to_string(t / 6 % 2) + "\n";
    return text;
}

const Arguments kEarlierRun = smallRun({"--seed", "1", "--no-report", "--out", "@/out"});

} // namespace

Scenario::Scenario(const Plan& plan) : plan_(plan) {
    writeCompressed(world_ / "bold.nii.gz", plainSeries(24).bytes());
    writeFile(world_ / "design.tsv", designTable());
    if (!plan_.folder.empty()) std::filesystem::create_directory(world_ / plan_.folder);
    const Stage undisturbed = {world_.path(), {world_.path()}};
    for (const Arguments& arguments : plan_.before) {
        const Ending ending = runDisturbed(resolved(arguments), undisturbed, {});
        if (ending.status != 0) throw std::runtime_error("preparing " + plan_.name + ": " + ending.err);
    }
    if (!plan_.earlierText.empty()) writeFile(world_ / plan_.place, plan_.earlierText);
    before_ = now();
    earlier_ = below(before_, plan_.place);

    const Ending ending = run({});
    if (ending.status != 0) throw std::runtime_error(plan_.name + ": " + ending.err);
    calls_ = ending.calls;
    wanted_ = withoutTimes(below(now(), plan_.place));
}

Ending Scenario::run(const Fault& fault) {
    restore(world_.path(), before_);
    return runDisturbed(resolved(plan_.arguments), stage(), fault);
}

std::unique_ptr<DisturbedCommand> Scenario::start(const Fault& fault, const std::filesystem::path& pauseStem) {
    restore(world_.path(), before_);
    Stage paused = stage();
    paused.pauseStem = pauseStem;
    return std::make_unique<DisturbedCommand>(resolved(plan_.arguments), paused, fault);
}

std::string Scenario::log() {
    restore(world_.path(), before_);
    const TemporaryFolder logs;
    Stage logged = stage();
    logged.log = logs / "log";
    runDisturbed(resolved(plan_.arguments), logged, {});
    return textOf(logs / "log");
}

std::uint64_t Scenario::numberOf(Call call, const std::string& ending, int occurrence) {
    std::istringstream lines(log());
    const std::string start = std::string(kCallNames[static_cast<std::size_t>(call)]) + "\t";
    std::uint64_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with(start)) continue;
        ++number;
        if (line.ends_with(ending) && --occurrence == 0) return number;
    }
    return 0;
}

Ending Scenario::runAgain(bool force) {
    Arguments arguments = resolved(plan_.arguments);
    if (force) arguments.emplace_back("--force");
    return runDisturbed(arguments, stage(), {});
}

Stage Scenario::stage() const {
    return {world_ / plan_.folder, {world_.path(), REPORT_TEMPLATE_FOLDER}};
}

Arguments Scenario::resolved(const Arguments& arguments) const {
    Arguments result = arguments;
    for (std::string& argument : result) {
        if (argument.starts_with('@')) argument.replace(0, 1, world_.path().string());
    }
    return result;
}

Scenario::Plan planNamed(const std::string& name) {
    for (const Scenario::Plan& plan : scenarioPlans()) {
        if (plan.name == name) return plan;
    }
    throw std::invalid_argument(name);
}

std::vector<Scenario::Plan> scenarioPlans() {
    const Arguments newRun = {"--seed", "2", "--no-report", "--out", "@/out"};
    const Arguments replace = {"--seed", "2", "--no-report", "--out", "@/out", "--force"};
    const Arguments sample = {"simulate", "--size", "tiny", "--sources", "1", "--seed", "2", "--out", "@/out"};
    const Arguments denoise = {"denoise",   "@/out", "@/bold.nii.gz", "--reject", "1",      "--method", "aggr",
                               "--threads", "1",     "--no-report",   "--out",    "@/clean"};
    Arguments replaceSample = sample;
    replaceSample.emplace_back("--force");

    std::vector<Scenario::Plan> plans = {
        {"Run", smallRun(newRun), "out", ""},
        {"RunInPlaceOfAResult", smallRun(replace), "out", "", {kEarlierRun}},
        {"RunInTheCurrentFolder", smallRun({"--seed", "2", "--no-report", "--out", "."}), "out", "out"},
        {"RunInPlaceOfTheCurrentFolder",
         smallRun({"--seed", "2", "--no-report", "--out", ".", "--force"}),
         "out",
         "out",
         {kEarlierRun}},
        {"RunWithRepeats",
         smallRun({"--seed", "2", "--no-report", "--out", "@/out", "--repeats", "2", "--design", "@/design.tsv"}),
         "out", ""},
        {"Compare",
         {"compare", "@/out", "@/other", "--out", "@/pairs.tsv", "--force"},
         "pairs.tsv",
         "",
         {kEarlierRun, smallRun({"--seed", "2", "--no-report", "--out", "@/other"})},
         "earlier pairs\n"},
        {"Denoise", denoise, "clean", "", {kEarlierRun}},
        {"Simulate", sample, "out", ""},
        {"SimulateInPlaceOfASample",
         replaceSample,
         "out",
         "",
         {{"simulate", "--size", "tiny", "--sources", "1", "--seed", "1", "--out", "@/out"}}},
    };
    if (REPORT_IS_BUILT) {
        plans.push_back({"RunWithPage", smallRun({"--seed", "2", "--out", "@/out"}), "out", ""});
        plans.push_back(
            {"Report", {"report", "@/out"}, "out/report.html", "", {kEarlierRun}, "<html>earlier</html>\n"});
    }
    return plans;
}

} // namespace zn::test
