#include "headless/denoise/removed_parts.h"

namespace zn::headless {

std::vector<RemovedPart> removedParts(const Denoising& run) {
    std::vector<RemovedPart> parts;
    int column = 0; // of the removal: those of the rejected components come first
    for (std::size_t i = 0; i < run.verdicts.size(); ++i) {
        const Verdict& verdict = run.verdicts[i];
        const double percent = verdict.rejected ? run.removedPercent(column, column + 1) : 0.0;
        column += verdict.rejected ? 1 : 0;
        parts.push_back({run.courses.names[i], verdict.rejected, verdict.label, verdict.reason, percent});
    }
    if (run.confounds) {
        std::string names;
        for (const std::string& name : run.confounds->names) names += (names.empty() ? "" : ", ") + name;
        const int end = column + static_cast<int>(run.confounds->names.size());
        parts.push_back({"confounds", true, "", names, run.removedPercent(column, end)});
        column = end;
    }
    if (run.cosines > 0) {
        parts.push_back({"high_pass", true, "", std::to_string(run.cosines) + " cosines",
                         run.removedPercent(column, column + run.cosines)});
    }
    return parts;
}

} // namespace zn::headless
