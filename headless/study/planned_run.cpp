#include "headless/study/planned_run.h"

#include <system_error>

namespace zn::headless {

namespace fs = std::filesystem;

RunOptions runOptions(const PlannedRun& run, const StudyOptions& study) {
    RunOptions options = study.run;
    options.functional = run.image;
    options.designBesideImage = false;
    if (!run.events.empty()) options.design = run.events;
    options.confounds = run.confounds;
    options.dummyScans = run.dummyScans;
    options.sidecars = run.sidecars;
    if (!run.mask.empty()) {
        options.maskSource = MaskSource::kFile;
        options.mask = run.mask;
    }
    return options;
}

std::vector<std::string> runSettings(const PlannedRun& run, const StudyOptions& study) {
    std::vector<std::string> settings = study.runArguments;
    const auto add = [&](const char* option, const std::string& value) {
        settings.emplace_back(option);
        settings.push_back(value);
    };
    if (!run.mask.empty()) add("--mask", run.mask.string());
    if (!run.events.empty()) add("--design", run.events.string());
    if (!run.confounds.empty()) add("--confounds", run.confounds.string());
    if (run.dummyScans > 0) add("--dummy-scans", std::to_string(run.dummyScans));
    return settings;
}

std::vector<fs::path> inputsOf(const PlannedRun& run, const StudyOptions& study) {
    const RunOptions options = runOptions(run, study);
    std::vector<fs::path> files = {run.image,         options.mask,    options.design,
                                   options.confounds, options.regions, options.regionNames};
    for (const fs::path& sidecar : run.sidecars) files.push_back(sidecar);
    std::error_code error;
    std::erase_if(files, [&](const fs::path& file) { return file.empty() || !fs::exists(file, error); });
    return files;
}

} // namespace zn::headless
