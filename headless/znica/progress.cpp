#include "headless/znica/progress.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace zn {

namespace {

constexpr double kSecondsBetweenDrawings = 0.1;
constexpr int kBarWidth = 24;

struct Opening {
    const char* words; // of the plug-in's line
    const char* stage;
};

constexpr Opening kOpenings[] = {{"Computing covariance matrix", "covariance"},
                                 {"Computing eigenvalues", "eigenvalues"},
                                 {"Running FastICA", "components"},
                                 {"Computing parameters", "fingerprint"}};

} // namespace

Progress::Display Progress::suitable() {
    const char* terminal = std::getenv("TERM");
    const bool redraws = isatty(STDOUT_FILENO) != 0 && terminal && std::strcmp(terminal, "dumb") != 0;
    return redraws ? Display::kBar : Display::kLines;
}

void Progress::stage(std::string_view name) {
    if (stage_ == name) return;
    stage_ = name;
    sinceStage_ = Stopwatch();
    seeking_ = name == "components";
    found_ = 0;
    iterations_ = 0;
    if (display_ == Display::kLines) {
        std::printf("%s\n", stage_.c_str());
        std::fflush(stdout);
    }
    draw();
}

void Progress::logLine(std::string_view line) {
    for (const Opening& opening : kOpenings) {
        if (line.find(opening.words) != line.npos) stage(opening.stage);
    }
    if (!seeking_) return;
    if (line.find("(restarting)") != line.npos) iterations_ = 0;
    if (line.find("IC #:") != line.npos && line.find("(restarting)") == line.npos) componentFound();
    if (found_ == components_) seeking_ = false;
}

void Progress::componentFound() {
    ++found_;
    if (display_ == Display::kLines) {
        std::printf("%s\n", text().c_str());
        std::fflush(stdout);
    }
    iterations_ = 0;
    draw();
}

void Progress::vectorProduct(bool transposed) {
    if (!seeking_ || !transposed) return;
    ++iterations_;
    if (sinceDrawing_.seconds() >= kSecondsBetweenDrawings) draw();
}

void Progress::clear() {
    if (!drawn_) return;
    std::fputs("\r\033[K", stdout);
    std::fflush(stdout);
    drawn_ = false;
}

void Progress::draw() {
    if (display_ != Display::kBar) return;
    std::printf("\r\033[K%s", text().c_str());
    std::fflush(stdout);
    drawn_ = true;
    sinceDrawing_ = Stopwatch();
}

std::string Progress::text() const {
    if (stage_ != "components") return stage_;
    std::string line = "component " + std::to_string(found_) + " of " + std::to_string(components_);
    if (display_ == Display::kBar) {
        const auto done = static_cast<std::size_t>(kBarWidth * found_ / std::max(components_, 1));
        line += " [" + std::string(done, '#') + std::string(kBarWidth - done, '.') + "]";
    }
    line += ", " + std::to_string(iterations_) + " iterations";
    if (found_ > 0 && found_ < components_) {
        const double left = sinceStage_.seconds() / found_ * (components_ - found_);
        char seconds[48];
        std::snprintf(seconds, sizeof seconds, ", about %.0f s left", left);
        line += seconds;
    }
    return line;
}

} // namespace zn
