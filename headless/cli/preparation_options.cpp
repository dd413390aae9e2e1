#include "headless/cli/preparation_options.h"

#include <charconv>
#include <cmath>
#include <string>

namespace zn::headless {

namespace {

// A finite number from 0; the option's complaint otherwise.
double numberFromZero(const std::string& option, const std::string& text, const std::string& wanted) {
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number) || number < 0.0) {
        throw CLI::ValidationError(option, "needs " + wanted + "; got " + text);
    }
    return number;
}

void setSmoothing(PreparationOptions& o, const std::string& text) {
    o.smoothIfNeeded = text == "auto";
    o.smoothMm = o.smoothIfNeeded ? 0.0 : numberFromZero("--smooth", text, "a width in mm, 0 for none, or auto");
}

void setScaling(PreparationOptions& o, const std::string& text) {
    if (text != "none" && text != "percent" && text != "sd") {
        throw CLI::ValidationError("--scale", "needs none, percent or sd; got " + text);
    }
    o.scaling = text == "none" ? Scaling::kNone : text == "percent" ? Scaling::kPercent : Scaling::kUnitVariance;
}

} // namespace

void addPreparationOptions(CLI::App& run, PreparationOptions& o) {
    auto* smooth = run.add_option_function<std::string>(
        "--smooth", [&o](const std::string& text) { setSmoothing(o, text); },
        "Gaussian within the mask, FWHM in mm; auto: if needed; 0: none (auto)");
    smooth->type_name("MM|auto");
    auto* highPass = run.add_option_function<std::string>(
        "--high-pass",
        [&o](const std::string& text) {
            o.highPassSeconds = numberFromZero("--high-pass", text, "a cut-off in seconds, or 0 for none");
        },
        "remove drifts slower than this (0: none)");
    highPass->type_name("SECONDS");
    auto* scale = run.add_option_function<std::string>(
        "--scale", [&o](const std::string& text) { setScaling(o, text); },
        "none; percent: of each voxel's mean; sd: to unit variance (none)");
    scale->type_name("NAME");
}

} // namespace zn::headless
