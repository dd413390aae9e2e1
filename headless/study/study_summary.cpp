#include "headless/study/study_summary.h"

#include "headless/bids/word_list.h"

#include <algorithm>

namespace zn::headless {

void StudySummary::add(const std::string& run, const RunOutcome& outcome) {
    statuses_[run] = outcome.status;
    if (outcome.keepsEarlier) keepEarlier_.insert(run);
}

std::string StudySummary::text() const {
    std::size_t done = 0;
    std::size_t fewer = 0;
    std::vector<std::string> without;
    std::vector<std::string> withoutNew;
    for (const auto& [run, status] : statuses_) {
        done += status == 0 ? 1 : 0;
        fewer += status == 4 ? 1 : 0;
        if (status != 0 && status != 4) (keepEarlier_.contains(run) ? withoutNew : without).push_back(run);
    }
    without.insert(without.end(), notStarted_.begin(), notStarted_.end());
    std::string text =
        std::to_string(done) + " of " + std::to_string(runs_) + (runs_ == 1 ? " run" : " runs") + " done";
    if (fewer > 0) text += ", " + std::to_string(fewer) + " with fewer components";
    if (!without.empty()) text += ", " + std::to_string(without.size()) + " without result: " + wordList(without);
    if (!withoutNew.empty()) {
        text += ", " + std::to_string(withoutNew.size()) + " without a new result: " + wordList(withoutNew);
    }
    return text + denoisingText();
}

std::string StudySummary::denoisingText() const {
    std::vector<std::string> failed;
    for (const auto& [run, status] : denoised_) {
        if (status != 0) failed.push_back(run);
    }
    const std::size_t done = denoised_.size() - failed.size();
    failed.insert(failed.end(), notDenoised_.begin(), notDenoised_.end());
    const std::size_t all = done + failed.size() + unlabelled_.size() + neverDenoised_.size();
    if (all == 0) return "";
    std::string text = "; " + std::to_string(done) + " of " + std::to_string(all) + " denoised";
    if (!failed.empty()) text += ", " + std::to_string(failed.size()) + " failed: " + wordList(failed);
    if (!unlabelled_.empty()) {
        text += ", " + std::to_string(unlabelled_.size()) + " without labels: " + wordList(unlabelled_);
    }
    if (!neverDenoised_.empty()) {
        text += ", " + std::to_string(neverDenoised_.size()) + " not denoised: " + wordList(neverDenoised_);
    }
    return text;
}

ExitStatus StudySummary::status() const {
    int worst = 0;
    for (const auto* statuses : {&statuses_, &denoised_}) {
        for (const auto& [run, status] : *statuses) {
            if (status == 0 || (status == 4 && worst != 0)) continue;
            worst = worst == 0 || worst == 4 ? status : std::min(worst, status);
        }
    }
    return static_cast<ExitStatus>(worst);
}

} // namespace zn::headless
