#include "headless/cli/input_options.h"

#include "headless/cli/number_checks.h"

#include <charconv>
#include <string>

namespace zn::headless {

namespace {

void setMask(RunOptions& options, const std::string& text) {
    options.maskSource = text == "auto"   ? MaskSource::kAutomatic
                         : text == "none" ? MaskSource::kNone
                                          : MaskSource::kFile;
    if (options.maskSource == MaskSource::kFile) options.mask = text;
}

void setComponents(RunOptions& options, const std::string& text) {
    if (text == "auto" || text == "max") {
        options.componentCount = text == "auto" ? ComponentCount::kEstimated : ComponentCount::kMaximum;
        return;
    }
    constexpr int kMax = 1000000;
    int count = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size() || count < 1 || count > kMax) {
        throw CLI::ValidationError("--components", "needs a number from 1, auto or max; got " + text);
    }
    options.eigenvalues = {1, count};
}

// Empty for a plausible time. Giving milliseconds is the usual mistake.
std::string repetitionTimeComplaint(const std::string& text) {
    double seconds = 0.0;
    if (CLI::detail::lexical_cast(text, seconds) && seconds >= 0.001 && seconds <= 20.0) return "";
    return text + " is not a repetition time; give seconds from 0.001 to 20 (2000 ms is 2)";
}

} // namespace

CLI::Option* addInputOptions(CLI::App& run, RunOptions& o) {
    run.add_option_function<std::string>(
           "--mask", [&o](const std::string& text) { setMask(o, text); },
           "voxels to analyse: nonzero in this image; auto: brain mask from the mean image; none: all (auto)")
        ->type_name("FILE|auto|none");
    auto* components = run.add_option_function<std::string>(
        "--components", [&o](const std::string& text) { setComponents(o, text); },
        "number of components (and of leading eigenvalues kept); auto: estimated; max: one per volume (20)");
    components->type_name("N|auto|max");
    run.add_option("--dummy-scans", o.dummyScans, "omit the first N volumes (0)")
        ->check(CLI::Range(0, 1000000).description(""))
        ->type_name("N");
    run.add_option("--tr", o.secondsPerVolume, "repetition time (from the JSON sidecar or header)")
        ->check(repetitionTimeComplaint)
        ->type_name("SECONDS");
    run.add_option("--memory", o.memoryGib, "refuse a run that needs more (free memory)")
        ->check(finiteNumber("a number above 0, in GiB", [](double gib) { return gib > 0.0; }))
        ->type_name("GIB");
    run.add_flag("--dry-run", o.dryRun, "print input and required memory, then exit");
    return components;
}

} // namespace zn::headless
