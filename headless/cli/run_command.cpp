#include "headless/cli/commands.h"

#include "headless/cli/analysis_options.h"
#include "headless/cli/help_pages.h"
#include "headless/cli/input_options.h"
#include "headless/cli/list_option.h"
#include "headless/cli/number_checks.h"
#include "headless/cli/preparation_options.h"
#include "headless/run/run_driver.h"

#include <charconv>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace zn::headless {

namespace {

constexpr char kRunFooter[] = "Defaults are in parentheses.\n"
                              "Examples:\n"
                              "  znica run sub-01_task-rest_bold.nii.gz --out ica\n"
                              "  znica run bold.nii.gz --mask mask.nii.gz --components 30 --out ica\n"
                              "  znica run bold.nii.gz --out ica --design blocks.tsv \\\n"
                              "      --rois atlas.nii.gz --roi-names atlas.tsv\n";

bool parseCount(std::string_view text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 1;
}

void setEigenvalues(EigenvalueRange& range, const std::string& text) {
    const std::size_t colon = text.find(':');
    const bool valid = colon != std::string::npos && parseCount(std::string_view(text).substr(0, colon), range.first) &&
                       parseCount(std::string_view(text).substr(colon + 1), range.last) && range.first <= range.last;
    if (!valid) {
        throw CLI::ValidationError("--eigenvalues",
                                   "needs FIRST:LAST, counted from 1 and ascending, such as 2:21; got " + text);
    }
}

// The plug-in uses single precision, in which the smallest numbers become 0: no component would ever converge.
bool isEpsilon(double epsilon) {
    return static_cast<float>(epsilon) > 0.0f && epsilon <= 1.0;
}

void setNonlinearity(Nonlinearity& nonlinearity, const std::string& name) {
    const std::map<std::string, Nonlinearity> known = {
        {"tanh", Nonlinearity::kTanh}, {"gauss", Nonlinearity::kGauss}, {"cube", Nonlinearity::kCube}};
    const auto found = known.find(name);
    if (found == known.end()) throw CLI::ValidationError("--nonlinearity", "needs tanh, gauss or cube; got " + name);
    nonlinearity = found->second;
}

void setDesign(RunOptions& options, const std::string& text) {
    options.designBesideImage = text == "auto";
    if (!options.designBesideImage) options.design = text;
}

void setApproach(RunOptions& options, const std::string& name) {
    if (name != "deflation" && name != "symmetric") {
        throw CLI::ValidationError("--approach", "needs deflation or symmetric; got " + name);
    }
    options.approach = name == "symmetric" ? Approach::kSymmetric : Approach::kDeflation;
    options.approachRequested = true;
}

void addApproach(CLI::App& command, RunOptions& o) {
    command
        .add_option_function<std::string>(
            "--approach", [&o](const std::string& name) { setApproach(o, name); },
            "find components one by one, or all at once (symmetric)")
        ->type_name("deflation|symmetric");
    auto* starts = command.add_option("--starts", o.starts, "random starts of the symmetric approach (3)");
    starts->check(CLI::Range(1, 1000).description(""))->type_name("N")->group(kRareOptions);
    command.parse_complete_callback([&o, starts] {
        if (starts->count() == 0 || o.approach == Approach::kSymmetric) return;
        throw CLI::ValidationError("--starts", "needs --approach symmetric; deflation restarts by itself");
    });
}

void addSeparation(CLI::App& command, RunOptions& o, CLI::Option* components) {
    command
        .add_option_function<std::string>(
            "--eigenvalues", [&o](const std::string& range) { setEigenvalues(o.eigenvalues, range); },
            "eigenvalues to keep, instead of --components (1:20)")
        ->type_name("FIRST:LAST")
        ->excludes(components)
        ->group(kRareOptions);
    command
        .add_option_function<std::string>(
            "--nonlinearity", [&o](const std::string& name) { setNonlinearity(o.nonlinearity, name); },
            "tanh, gauss or cube (tanh)")
        ->type_name("NAME")
        ->group(kRareOptions);
    command.add_option("--epsilon", o.epsilon, "convergence threshold (0.0001)")
        ->check(finiteNumber("a number above 0 and up to 1", isEpsilon))
        ->type_name("E")
        ->group(kRareOptions);
    command
        .add_option("--max-iterations", o.maxIterations, "restart a component or the search after N iterations (500)")
        ->check(CLI::Range(1, 100000000).description(""))
        ->type_name("N")
        ->group(kRareOptions);
}

void addAsIs(CLI::App& command, RunOptions& o) {
    auto* asIs = command.add_flag_callback(
        "--as-is",
        [&o] {
            o.preparation = {};
            o.approach = Approach::kDeflation;
        },
        "no preparation, deflation: what the desktop computes");
    for (const char* other : {"--smooth", "--high-pass", "--scale", "--approach", "--starts"}) {
        asIs->excludes(command.get_option(other));
    }
}

void addFingerprint(CLI::App& command, RunOptions& o) {
    command
        .add_option_function<std::string>(
            "--design", [&o](const std::string& text) { setDesign(o, text); },
            "predictors: BIDS events, TSV, CSV, .mat, .1D, RTC")
        ->type_name("FILE|auto");
    auto* confounds = command.add_option("--confounds", o.confounds, "table of confounds to compare time courses with");
    confounds->type_name("TSV");
    command
        .add_option_function<std::string>(
            "--columns",
            [&o](const std::string& text) { o.confoundColumns = listIn("--columns", text, "trans_x,rot_z"); },
            "confounds to use (all)")
        ->type_name("A,B,...")
        ->needs(confounds)
        ->group(kRareOptions);
    auto* rois =
        command.add_option("--rois", o.regions, "label image of regions to compare maps with")->type_name("NIFTI");
    command.add_option("--roi-names", o.regionNames, "table of region names, with columns index and name")
        ->type_name("TSV")
        ->needs(rois);
    auto* clusterSize =
        command.add_option("--cluster-size", o.clusterSize, "minimum cluster size in voxels, 2 to 2000 (10)");
    clusterSize->check(CLI::Range(2, 2000).description(""))->type_name("N")->group(kRareOptions);
    command
        .add_flag_callback(
            "--no-clustering", [&o] { o.clusterSize.reset(); }, "skip the degree of clustering")
        ->excludes(clusterSize)
        ->group(kRareOptions);
    command.add_option("--z-threshold", o.zThreshold, "z threshold for clusters, 0.1 to 100 (2.5)")
        ->check(finiteNumber("a number from 0.1 to 100", [](double z) { return z >= 0.1 && z <= 100.0; }))
        ->type_name("Z")
        ->group(kRareOptions);
    command.add_option("--label", o.label, "subject or session, for the map names")->type_name("TEXT");
}

} // namespace

void addAnalysisOptions(CLI::App& run, RunOptions& o) {
    auto* components = addInputOptions(run, o);
    addPreparationOptions(run, o.preparation);
    addApproach(run, o);
    addAsIs(run, o);
    addSeparation(run, o, components);
    addFingerprint(run, o);
    run.add_option("--plugin", o.plugin, "plug-in file (the one beside this command)")
        ->type_name("FILE")
        ->group(kRareOptions);
}

void addControlOptions(CLI::App& command, RunControl& control) {
    command.add_option("--seed", control.seed, "random seed; the same one reproduces a run (random)")
        ->check(wholeNumber(std::numeric_limits<std::uint32_t>::max()))
        ->type_name("N");
    command.add_option("--threads", control.threads, "threads (all)")
        ->check(CLI::Range(1, 1024).description(""))
        ->type_name("N");
    command.add_option("--repeats", control.repeats, "run R times to measure stability (1)")
        ->check(CLI::Range(1, 1000).description(""))
        ->type_name("R");
    auto* quiet = command.add_flag("--quiet", control.quiet, "print only errors");
    command.add_flag("--verbose", control.verbose, "also print the plug-in's log")->excludes(quiet);
    command.add_flag("!--no-report", control.report, "do not write report.html");
    command.add_flag("--keep-partial", control.keepPartial, "keep the files of a run that fails")->group(kRareOptions);
}

void addRunCommand(CLI::App& app, Action& action) {
    const auto options = std::make_shared<RunOptions>();
    RunOptions& o = *options;
    auto* run =
        app.add_subcommand("run", "Analyse a 4D image: component maps, time courses and sixteen parameters each.");
    run->add_option("BOLD", o.functional, "4D NIfTI image (.nii, .nii.gz)")->required();
    run->add_option("--out", o.out, "folder to create for the result")->required()->type_name("DIR");
    addAnalysisOptions(*run, o);
    run->add_flag("--force", o.force, "replace an earlier result in DIR");
    addControlOptions(*run, o.control);
    run->set_help_all_flag("--help-all", "also list options that are rarely needed");
    run->footer(kRunFooter);
    run->callback([options, &action] {
        action = [options](UnfinishedWork& unfinished) { return runAnalysis(*options, unfinished); };
    });
}

} // namespace zn::headless
