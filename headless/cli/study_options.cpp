#include "headless/cli/study_options.h"

#include "headless/cli/absolute_path.h"
#include "headless/cli/help_pages.h"

#include <string>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

void addDerivatives(StudyOptions& options, const std::vector<std::string>& texts) {
    options.derivatives.clear();
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        const fs::path folder = absolutePath(equals == std::string::npos ? text : text.substr(equals + 1));
        const std::string name = equals == std::string::npos ? folder.filename().string() : text.substr(0, equals);
        options.derivatives.push_back({name, folder});
    }
}

void setMaskFrom(StudyOptions& options, const std::string& text) {
    if (text != "derivatives" && text != "auto") {
        throw CLI::ValidationError("--mask-from", "needs derivatives or auto; got " + text);
    }
    options.maskFrom = text == "auto" ? MaskFrom::kAutomatic : MaskFrom::kDerivatives;
}

void setRerun(StudyOptions& options, const std::string& text) {
    if (text != "failed" && text != "all") throw CLI::ValidationError("--rerun", "needs failed or all; got " + text);
    options.rerun = text == "all" ? Rerun::kAll : Rerun::kFailed;
}

CLI::Option* addLabels(CLI::App& command, const char* names, std::vector<std::string>& labels, const char* about) {
    return command.add_option(names, labels, about)->type_name("LABEL...");
}

} // namespace

void addSelectionOptions(CLI::App& command, StudyOptions& o) {
    Selection& s = o.selection;
    addLabels(command, "--participant-label,--participant_label", s.participants, "subjects (all)");
    addLabels(command, "--session-label,--session_label", s.sessions, "sessions (all)");
    addLabels(command, "-t,--task,--task-id,--task_id", s.tasks, "tasks (all)");
    addLabels(command, "--run", s.runs, "runs, such as 1 (all)");
    command.add_option("--space", s.space, "space of preprocessed images (the only one)")->type_name("LABEL[:res-R]");
    command.add_option("--bids-filter-file,--bids_filter_file", s.filterFile, "further conditions on the images")
        ->type_name("JSON");
    command.add_option("--only", s.only, "one run, by its name in --list")->type_name("NAME");
    command
        .add_option_function<std::vector<std::string>>(
            "-d,--derivatives", [&o](const std::vector<std::string>& texts) { addDerivatives(o, texts); },
            "take preprocessed images, such as fMRIPrep's, from here")
        ->type_name("[NAME=]DIR...");
    command
        .add_option_function<std::string>(
            "--mask-from", [&o](const std::string& text) { setMaskFrom(o, text); },
            "masks of preprocessed images (theirs, if any)")
        ->type_name("derivatives|auto");
}

void addSchedulingOptions(CLI::App& command, StudyOptions& o) {
    command
        .add_option_function<std::string>(
            "--rerun", [&o](const std::string& text) { setRerun(o, text); },
            "repeat runs without a result, or all (changed, interrupted)")
        ->type_name("failed|all");
    command.add_option("--nprocs,--n-cpus,--n_cpus", o.processors, "processors for all runs together (all)")
        ->check(CLI::Range(1, 4096).description(""))
        ->type_name("N");
    command
        .add_option_function<std::int64_t>(
            "--mem,--mem-mb,--mem_mb", [&o](std::int64_t mebibytes) { o.memoryBytes = mebibytes * 1048576; },
            "memory for all runs together, in MiB (what is free)")
        ->check(CLI::Range(std::int64_t{1}, std::int64_t{1} << 40).description(""))
        ->type_name("MIB")
        ->excludes(command.get_option("--memory"));
    command.add_flag("--stop-on-first-crash", o.stopOnFirstCrash, "start no further runs after one without a result");
    const std::string about = "accepted, without effect";
    command
        .add_option_function<std::string>(
            "-w,--work-dir,--work_dir", [](const std::string&) {}, about)
        ->type_name("DIR")
        ->group(kRareOptions);
    command.add_flag("--skip-bids-validation,--skip_bids_validation", about)->group(kRareOptions);
}

} // namespace zn::headless
