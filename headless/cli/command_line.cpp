#include "headless/cli/command_line.h"

#include "headless/cli/help_pages.h"
#include "headless/cli/input_options.h"
#include "headless/cli/number_checks.h"

#include <charconv>
#include <limits>
#include <map>
#include <string>

namespace zn::headless {

namespace {

constexpr char kAbout[] =
    "Spatial independent component analysis of functional MRI data, by the same plug-in that the desktop host loads.";

constexpr char kExitStatus[] = "Exit status:\n"
                               "  0    done\n"
                               "  1    the result cannot be written, or anything else\n"
                               "  2    wrong usage\n"
                               "  3    an input or a setting does not fit\n"
                               "  4    fewer components found than asked for (what was found is written)\n"
                               "  5    not enough memory\n"
                               "  129  hung up (128 + the number of the signal)\n"
                               "  130  interrupted\n"
                               "  143  terminated\n";

constexpr char kRunExamples[] = "Examples:\n"
                                "  znica run sub-01_task-rest_bold.nii.gz --out ica\n"
                                "  znica run bold.nii.gz --mask mask.nii.gz --components 30 --out ica\n"
                                "  znica run bold.nii.gz --out ica --design blocks.tsv \\\n"
                                "      --rois atlas.nii.gz --roi-names atlas.tsv\n";

constexpr char kSimulateExamples[] = "Example:\n"
                                     "  znica simulate --out sample\n"
                                     "  znica run sample/sub-sim_task-blocks_bold.nii.gz --out ica\n"
                                     "  znica score ica --truth sample\n";

bool parseCount(std::string_view text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 1;
}

void setEigenvalues(RunOptions& options, const std::string& range) {
    const std::size_t colon = range.find(':');
    const bool valid = colon != std::string::npos &&
                       parseCount(std::string_view(range).substr(0, colon), options.firstEigenvalue) &&
                       parseCount(std::string_view(range).substr(colon + 1), options.lastEigenvalue) &&
                       options.firstEigenvalue <= options.lastEigenvalue;
    if (!valid)
        throw CLI::ValidationError("--eigenvalues", "FIRST:LAST counts from 1 and rises, as in 2:21; got " + range);
}

// The plug-in takes it in single precision, where the smallest numbers are 0: no component would ever converge.
bool isEpsilon(double epsilon) {
    return static_cast<float>(epsilon) > 0.0f && epsilon <= 1.0;
}

void setNonlinearity(RunOptions& options, const std::string& name) {
    const std::map<std::string, Nonlinearity> known = {
        {"tanh", Nonlinearity::kTanh}, {"gauss", Nonlinearity::kGauss}, {"cube", Nonlinearity::kCube}};
    const auto found = known.find(name);
    if (found == known.end()) throw CLI::ValidationError("--nonlinearity", "needs tanh, gauss or cube; got " + name);
    options.nonlinearity = found->second;
}

} // namespace

CommandLine::CommandLine() : app(kAbout, "znica") {
    app.require_subcommand(1);
    app.set_version_flag("--version", "znica " ZNICA_VERSION);
    app.footer(kExitStatus);
    app.formatter(compactHelp()); // before the commands, which take it over
    app.add_flag_callback("--manual-page", [this] { throw CLI::CallForVersion(manualPage(app, ZNICA_VERSION), 0); })
        ->group("");
    app.add_flag_callback("--bash-completion", [this] { throw CLI::CallForVersion(bashCompletion(app), 0); })
        ->group("");
    addRun();
    addSimulate();
    addScore();
    addInfo();
    addCompare();
    addReport();
}

void CommandLine::addRun() {
    RunOptions& o = runOptions;
    run = app.add_subcommand("run", "Analyse a 4D image: component maps, time courses and sixteen parameters each.");
    run->add_option("BOLD", o.functional, "4D NIfTI image (.nii, .nii.gz)")->required();
    run->add_option("--out", o.out, "folder to make for the result")->required()->type_name("DIR");
    auto* components = addInputOptions(*run, o);
    run->add_option_function<std::string>(
           "--eigenvalues", [&o](const std::string& range) { setEigenvalues(o, range); },
           "keep these eigenvalues, as in 2:21")
        ->type_name("FIRST:LAST")
        ->excludes(components);
    run->add_option_function<std::string>(
           "--nonlinearity", [&o](const std::string& name) { setNonlinearity(o, name); }, "tanh, gauss or cube (tanh)")
        ->type_name("NAME");
    run->add_option("--epsilon", o.epsilon, "a component has converged below this change (0.0001)")
        ->check(finiteNumber("a number above 0 and up to 1", isEpsilon))
        ->type_name("E");
    run->add_option("--max-iterations", o.maxIterations, "start a component anew after these (500)")
        ->check(CLI::Range(1, 100000000).description(""))
        ->type_name("N");
    run->add_option("--design", o.design, "up to 16 predictors: RTC text, or table with header")->type_name("FILE");
    auto* rois =
        run->add_option("--rois", o.regions, "label image of regions to compare maps with")->type_name("NIFTI");
    run->add_option("--roi-names", o.regionNames, "table with columns index and name")->type_name("TSV")->needs(rois);
    auto* clusterSize = run->add_option("--cluster-size", o.clusterSize, "voxels that make a cluster, 2 to 2000 (10)");
    clusterSize->check(CLI::Range(2, 2000).description(""))->type_name("N");
    run->add_flag_callback(
           "--no-clustering", [&o] { o.clusterSize.reset(); }, "leave out the degree of clustering")
        ->excludes(clusterSize);
    run->add_option("--z-threshold", o.zThreshold, "voxels of a cluster lie beyond it, 0.1 to 100 (2.5)")
        ->check(finiteNumber("a number from 0.1 to 100", [](double z) { return z >= 0.1 && z <= 100.0; }))
        ->type_name("Z");
    run->add_option("--label", o.label, "subject or session, for the maps' names")->type_name("TEXT");
    run->add_option("--plugin", o.plugin, "plug-in file (the one beside this command)")->type_name("FILE");
    run->add_flag("--force", o.force, "replace an earlier result in DIR");
    addRunControl(*run, o.control);
    run->footer(kRunExamples);
}

std::string CommandLine::complaint(const CLI::ParseError& error, int count, const char* const* arguments) const {
    if (!app.get_subcommands().empty()) {
        return std::string(error.what()) + " (see znica " + app.get_subcommands().front()->get_name() + " --help)";
    }
    const std::string help = " (see znica --help)";
    if (error.get_name() != "RequiredError") return error.what() + help;
    std::string commands;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        commands += (commands.empty() ? "" : ", ") + command->get_name();
    }
    if (count < 2) return "name a command: " + commands + help;
    return std::string(arguments[1]) + " is not a command; the commands are " + commands + help;
}

void CommandLine::addSimulate() {
    SimulateOptions& o = simulateOptions;
    simulate = app.add_subcommand("simulate", "Make a brain-shaped sample with known sources.");
    simulate->add_option("--out", o.out, "folder to make for the sample")->required()->type_name("DIR");
    simulate->add_option("--size", o.size, "tiny, small, medium or large (small: 22,000 voxels, 150 volumes)")
        ->check(CLI::IsMember(SimulateOptions::sizeNames()).description(""))
        ->type_name("NAME");
    simulate->add_option("--sources", o.sources, "how many, 1 to 24 (8)")
        ->check(CLI::Range(1, 24).description(""))
        ->type_name("N");
    simulate->add_option("--noise", o.noisePercent, "noise in per cent of the mean signal (1)")
        ->check(finiteNumber("a number from 0 to 100", [](double s) { return s >= 0.0 && s <= 100.0; }))
        ->type_name("S");
    simulate->add_option("--seed", o.seed, "another seed, another sample (1)")
        ->check(wholeNumber(std::numeric_limits<std::uint64_t>::max()))
        ->type_name("N");
    simulate->add_flag("--force", o.force, "replace an earlier sample in DIR");
    simulate->footer(kSimulateExamples);
}

void CommandLine::addScore() {
    score = app.add_subcommand("score", "Tell how well a result recovers the sources of a simulated sample.");
    score->add_option("RESULT", scoreOptions.result, "folder that znica run made")->required()->type_name("DIR");
    score->add_option("--truth", scoreOptions.truth, "folder that znica simulate made")->required()->type_name("DIR");
    score->footer(kSimulateExamples);
}

void CommandLine::addInfo() {
    info = app.add_subcommand("info", "Tell what the plug-in says about itself and which host functions it finds.");
    info->add_option("--plugin", infoPlugin, "plug-in file (the one beside this command)")->type_name("FILE");
    info->footer("Example:\n  znica info\n");
}

void CommandLine::addCompare() {
    CompareOptions& o = compareOptions;
    compare = app.add_subcommand("compare", "Pair the components of two results by absolute spatial correlation.");
    compare->add_option("A", o.a, "folder that znica run made")->required()->type_name("DIR");
    compare->add_option("B", o.b, "another one on the same grid")->required()->type_name("DIR");
    compare->add_option("--out", o.out, "write the table here, too")->type_name("TSV");
    compare->add_flag("--force", o.force, "replace that file");
    compare->footer("Example:\n  znica run bold.nii.gz --out a --seed 1\n  znica run bold.nii.gz --out b --seed 2\n"
                    "  znica compare a b\n");
}

void CommandLine::addReport() {
    report = app.add_subcommand("report", "Make report.html again from the files of a result.");
    report->add_option("DIR", reportFolder, "folder that znica run made")->required()->type_name("DIR");
    report->footer("Example:\n  znica report result\n");
}

} // namespace zn::headless
