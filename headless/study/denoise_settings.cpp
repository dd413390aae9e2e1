#include "headless/study/denoise_settings.h"

#include <charconv>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

std::string textOf(double number) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

std::string columnsOf(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ",") + name;
    return text.empty() ? "none" : text;
}

} // namespace

std::vector<std::string> denoiseSettings(const PlannedRun& run, const StudyOptions& study) {
    std::vector<std::string> settings = {"--labels", run.labels.string(), "--method", nameOf(*study.denoise)};
    if (!run.confounds.empty()) {
        settings.insert(settings.end(),
                        {"--confounds", run.confounds.string(), "--columns", columnsOf(study.run.confoundColumns)});
    }
    const double cutOff = study.run.preparation.highPassSeconds;
    if (cutOff > 0.0) settings.insert(settings.end(), {"--high-pass", textOf(cutOff)});
    if (!study.run.control.report) settings.emplace_back("--no-report");
    return settings;
}

std::vector<fs::path> denoiseInputs(const PlannedRun& run, const StudyFolder& folder) {
    std::vector<fs::path> files = {run.image, run.labels, folder.record(run.name)};
    if (!run.confounds.empty()) files.push_back(run.confounds);
    return files;
}

} // namespace zn::headless
