#include "headless/group/steps/odd_runs.h"

#include "headless/failure/failure.h"
#include "headless/nifti/same_grid.h"
#include "headless/text/short_texts.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace zn::headless {

namespace {

// "MNI152NLin2009cAsym" of a name with "_space-MNI152NLin2009cAsym_"; empty for a name without.
std::string spaceOf(const RunHeader& run) {
    const std::string name = run.listed.image.filename().string();
    const std::string entity = "_space-";
    const std::size_t start = name.find(entity);
    if (start == std::string::npos) return "";
    const std::size_t value = start + entity.size();
    return name.substr(value, name.find_first_of("_.", value) - value);
}

bool sameGrid(const RunHeader& a, const RunHeader& b) {
    try {
        requireSameGrid("", a.header, b.header);
        return true;
    } catch (const Failure&) {
        return false;
    }
}

// One aspect in which all runs have to agree.
struct Aspect {
    std::function<bool(const RunHeader&, const RunHeader&)> same;
    std::function<std::string(const RunHeader&)> text;
    const char* advice;
};

// "sub-01, sub-02 have "
std::string namesOf(const std::vector<const RunHeader*>& runs) {
    std::vector<std::string> names;
    names.reserve(runs.size());
    for (const RunHeader* run : runs) names.push_back(run->listed.name);
    return listOfNames(names) + (names.size() == 1 ? " has " : " have ");
}

void requireSame(const std::vector<RunHeader>& runs, const Aspect& aspect) {
    std::vector<std::vector<const RunHeader*>> kinds;
    for (const RunHeader& run : runs) {
        const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                       [&](const auto& known) { return aspect.same(*known.front(), run); });
        if (kind == kinds.end()) {
            kinds.push_back({&run});
        } else {
            kind->push_back(&run);
        }
    }
    if (kinds.size() == 1) return;
    const auto most =
        std::max_element(kinds.begin(), kinds.end(), [](const auto& a, const auto& b) { return a.size() < b.size(); });
    std::vector<std::string> odd;
    for (const auto& kind : kinds) {
        if (&kind == &*most) continue;
        for (const RunHeader* run : kind) odd.push_back(run->listed.name + " has " + aspect.text(*run));
    }
    const std::string who = 2 * most->size() > runs.size() ? "most have " : namesOf(*most);
    throw Failure(ExitStatus::kInput, "the runs differ: " + who + aspect.text(*most->front()) + ", but " +
                                          listOfNames(odd) + "; " + aspect.advice);
}

} // namespace

std::string listOfNames(const std::vector<std::string>& names) {
    constexpr std::size_t kMost = 5;
    std::string text;
    for (std::size_t i = 0; i < std::min(kMost, names.size()); ++i) text += (i > 0 ? ", " : "") + names[i];
    return names.size() <= kMost ? text : text + " and " + std::to_string(names.size() - kMost) + " more";
}

void requireOneKind(const std::vector<RunHeader>& runs) {
    requireSame(runs, {[](const RunHeader& a, const RunHeader& b) { return spaceOf(a) == spaceOf(b); },
                       [](const RunHeader& run) {
                           const std::string space = spaceOf(run);
                           return space.empty() ? "no space in their names" : "space-" + space;
                       },
                       "list images of one space."});
    requireSame(runs, {sameGrid,
                       [](const RunHeader& run) {
                           const auto& affine = run.header.affine;
                           char corner[96];
                           std::snprintf(corner, sizeof corner, " with the first voxel at (%.6g, %.6g, %.6g) mm",
                                         affine[0][3], affine[1][3], affine[2][3]);
                           return sizeText(run.header) + " voxels" + corner;
                       },
                       "leave them out, or resample them to the grid of the others."});
    requireSame(runs, {[](const RunHeader& a, const RunHeader& b) {
                           return std::fabs(a.secondsPerVolume - b.secondsPerVolume) <= 0.001 * (1.0 + 1e-6);
                       },
                       [](const RunHeader& run) { return "a repetition time of " + secondsText(run.secondsPerVolume); },
                       "leave them out, or specify the true one of all runs with --tr SECONDS."});
}

} // namespace zn::headless
