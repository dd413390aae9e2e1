#include "headless/study/study_summary.h"

#include "headless/bids/word_list.h"

#include <algorithm>

namespace zn::headless {

std::string StudySummary::text() const {
    std::size_t done = 0;
    std::size_t fewer = 0;
    std::vector<std::string> without;
    for (const auto& [run, status] : statuses_) {
        done += status == 0 ? 1 : 0;
        fewer += status == 4 ? 1 : 0;
        if (status != 0 && status != 4) without.push_back(run);
    }
    without.insert(without.end(), notStarted_.begin(), notStarted_.end());
    std::string text =
        std::to_string(done) + " of " + std::to_string(runs_) + (runs_ == 1 ? " run" : " runs") + " done";
    if (fewer > 0) text += ", " + std::to_string(fewer) + " with fewer components";
    if (!without.empty()) text += ", " + std::to_string(without.size()) + " without result: " + wordList(without);
    return text;
}

ExitStatus StudySummary::status() const {
    int worst = 0;
    for (const auto& [run, status] : statuses_) {
        if (status == 0 || (status == 4 && worst != 0)) continue;
        worst = worst == 0 || worst == 4 ? status : std::min(worst, status);
    }
    return static_cast<ExitStatus>(worst);
}

} // namespace zn::headless
