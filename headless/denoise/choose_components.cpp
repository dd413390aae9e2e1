#include "headless/denoise/denoise_stages.h"

#include <algorithm>
#include <string_view>

namespace zn::headless {

namespace {

constexpr auto kMostListed = 10; // components without a label; the table of components has all of them

// "ICA_02, ICA_05"
template <class Wanted>
std::string namesOf(const CourseColumns& courses, const std::vector<Verdict>& verdicts, const Wanted& wanted) {
    std::string names;
    for (std::size_t i = 0; i < verdicts.size(); ++i) {
        if (wanted(verdicts[i])) names += (names.empty() ? "" : ", ") + courses.names[i];
    }
    return names;
}

// Components have the same names in every result, so labels of another one would pass unnoticed.
void noteForeignLabels(Denoising& run) {
    constexpr std::string_view kEnding = "_desc-ICA_labels.tsv"; // of the file that the report exports
    const std::string name = run.options.labels.filename().string();
    if (!name.ends_with(kEnding) || name == run.result->stem() + std::string(kEnding)) return;
    run.say("Labels: " + name + " has the name of another result than that of " + run.result->stem() +
            "; check that they belong together.");
}

} // namespace

void chooseComponents(Denoising& run) {
    const DenoiseOptions& options = run.options;
    noteForeignLabels(run);
    const auto& names = run.courses.names;
    run.verdicts = options.labels.empty() ? verdictsFor(options.rejected, names) : readVerdicts(options.labels, names);
    const auto& verdicts = run.verdicts;
    const auto rejected = [](const Verdict& verdict) { return verdict.rejected; };
    const auto unsure = [](const Verdict& verdict) { return verdict.label == "unsure"; };
    const auto unlabelled = [](const Verdict& verdict) { return verdict.label.empty(); };
    const int count = run.rejectedCount();
    run.say("Components: " + std::to_string(count) + " of " + std::to_string(names.size()) + " rejected" +
            (count > 0 ? ": " + namesOf(run.courses, verdicts, rejected) : "") + ".");
    if (options.labels.empty()) return;
    const auto left = std::ranges::count_if(verdicts, unlabelled);
    if (left > 0) {
        const bool few = left <= kMostListed;
        run.say("Components: " + std::to_string(left) + " without a label, kept" +
                (few ? ": " + namesOf(run.courses, verdicts, unlabelled) : " (see the table of components)") + ".");
    }
    const std::string doubtful = namesOf(run.courses, verdicts, unsure);
    if (!doubtful.empty()) run.say("Components: labelled unsure, kept: " + doubtful + ".");
}

} // namespace zn::headless
