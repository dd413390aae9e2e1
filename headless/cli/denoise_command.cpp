#include "headless/cli/commands.h"

#include "headless/cli/help_pages.h"
#include "headless/cli/list_option.h"
#include "headless/cli/number_checks.h"
#include "headless/cli/standard_output.h"
#include "headless/denoise/denoise_driver.h"

#include <memory>
#include <string>

namespace zn::headless {

namespace {

constexpr char kDenoiseFooter[] = "Defaults are in parentheses.\n"
                                  "Examples:\n"
                                  "  znica denoise ica bold.nii.gz --labels bold_desc-ICA_labels.tsv --out clean\n"
                                  "  znica denoise ica bold.nii.gz --reject 3,7,12 --out clean \\\n"
                                  "      --confounds confounds.tsv --columns csf,white_matter --high-pass 128\n";

void setMethod(DenoiseOptions& options, const std::string& name) {
    const auto method = denoiseMethodNamed(name);
    if (!method) throw CLI::ValidationError("--method", "needs nonaggr, aggr or orthaggr; got " + name);
    options.method = *method;
}

void addRejection(CLI::App& command, DenoiseOptions& o) {
    auto* labels = command.add_option("--labels", o.labels, "labels exported by the report: noise is rejected");
    labels->type_name("TSV");
    auto* reject = command.add_option_function<std::string>(
        "--reject", [&o](const std::string& text) { o.rejected = listIn("--reject", text, "3,7-9 or ICA_02,ICA_06"); },
        "instead: components by number (from 1) or name");
    reject->type_name("LIST")->excludes(labels);
    command.parse_complete_callback([labels, reject] {
        if (labels->count() + reject->count() > 0) return;
        throw CLI::RequiredError("--labels TSV or --reject LIST");
    });
}

void addNuisance(CLI::App& command, DenoiseOptions& o) {
    auto* confounds = command.add_option("--confounds", o.confounds, "table of confounds to regress out as well");
    confounds->type_name("TSV");
    command
        .add_option_function<std::string>(
            "--columns",
            [&o](const std::string& text) { o.confoundColumns = listIn("--columns", text, "trans_x,rot_z"); },
            "confounds to use; none: only show framewise_displacement (all)")
        ->type_name("A,B,...")
        ->needs(confounds);
    command.add_option("--high-pass", o.highPassSeconds, "remove drifts slower than this in the same regression (no)")
        ->check(finiteNumber("a cut-off in seconds, or 0 for none", [](double seconds) { return seconds >= 0.0; }))
        ->type_name("SECONDS");
}

} // namespace

void addDenoiseCommand(CLI::App& app, Action& action) {
    const auto options = std::make_shared<DenoiseOptions>();
    DenoiseOptions& o = *options;
    auto* command = app.add_subcommand("denoise", "Remove rejected components from a 4D image, with the evidence.");
    command->add_option("RESULT", o.result, "folder created by znica run")->required()->type_name("DIR");
    command->add_option("BOLD", o.functional, "image analysed, or another version of it")->required();
    command->add_option("--out", o.out, "folder to create for the denoised image")->required()->type_name("DIR");
    addRejection(*command, o);
    command
        ->add_option_function<std::string>(
            "--method", [&o](const std::string& name) { setMethod(o, name); },
            "nonaggr: keep what noise shares with signal; aggr: remove it; orthaggr: remove what noise does not share "
            "(nonaggr)")
        ->type_name("NAME");
    addNuisance(*command, o);
    command->add_option("--threads", o.threads, "threads (all)")
        ->check(CLI::Range(1, 1024).description(""))
        ->type_name("N");
    command->add_flag("--force", o.force, "replace an earlier denoised image in DIR");
    command->add_flag("--quiet", o.quiet, "print only errors");
    command->add_flag("!--no-report", o.report, "do not write report.html");
    command->footer(kDenoiseFooter);
    command->callback([options, &action] {
        action = [options](UnfinishedWork& unfinished) {
            denoise(*options, unfinished);
            return ExitStatus::kDone;
        };
    });
}

} // namespace zn::headless
