#include "headless/study/study_progress.h"

#include "headless/bids/word_list.h"
#include "headless/run/progress.h"

#include <cstdio>

namespace zn::headless {

StudyProgress::StudyProgress(std::size_t runs, bool quiet)
    : runs_(runs), quiet_(quiet), terminal_(Progress::suitable() == Progress::Display::kBar) {}

void StudyProgress::ended(const std::string& text) {
    ++ended_;
    if (quiet_) return;
    clear();
    std::printf("[%zu of %zu%s] %s\n", ended_, runs_, timeLeft().c_str(), text.c_str());
    std::fflush(stdout);
}

void StudyProgress::draw(const std::vector<std::string>& underWay) {
    if (quiet_ || !terminal_) return;
    constexpr std::size_t kNarrow = 79;
    const std::string line =
        "[" + std::to_string(ended_) + " of " + std::to_string(runs_) + timeLeft() + "] " + wordList(underWay);
    std::printf("\r\033[K%s", line.substr(0, kNarrow).c_str());
    std::fflush(stdout);
    drawn_ = true;
}

void StudyProgress::clear() {
    if (!drawn_) return;
    std::fputs("\r\033[K", stdout);
    std::fflush(stdout);
    drawn_ = false;
}

std::string StudyProgress::timeLeft() const {
    if (ended_ == 0 || ended_ >= runs_) return "";
    return ", " + durationText(since_.seconds() / static_cast<double>(ended_) * static_cast<double>(runs_ - ended_)) +
           " left";
}

std::string durationText(double seconds) {
    char text[48];
    if (seconds < 120.0) {
        std::snprintf(text, sizeof text, "about %.0f s", seconds);
    } else if (seconds < 7200.0) {
        std::snprintf(text, sizeof text, "about %.0f min", seconds / 60.0);
    } else {
        std::snprintf(text, sizeof text, "about %.1f h", seconds / 3600.0);
    }
    return text;
}

} // namespace zn::headless
