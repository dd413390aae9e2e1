#include "headless/run/progress.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <sys/ioctl.h>
#include <unistd.h>

namespace zn::headless {

namespace {

constexpr double kSecondsBetweenDrawings = 0.1;
constexpr int kBarWidth = 24;

struct Opening {
    const char* words; // of the plug-in's line
    const char* stage;
};

constexpr Opening kOpenings[] = {{"Computing covariance matrix", "covariance"},
                                 {"Computing eigenvalues", "eigenvalues"},
                                 {"Running FastICA computation (deflation", "components"},
                                 {"Computing parameters", "fingerprint"}};

// In columns; if unknown, more than any line needs.
std::size_t terminalWidth() {
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 1000;
}

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
    extracting_ = name == "components";
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
    if (!extracting_) return;
    int number = 0;
    int iterations = 0;
    if (line.find("(restarting)") != line.npos) {
        iterations_ = 0;
    } else if (std::sscanf(std::string(line).c_str(), "// Plugin> IC #: %d Number of Iterations: %d", &number,
                           &iterations) == 2) {
        componentFound(iterations);
    }
    if (found_ == components_) extracting_ = false;
}

void Progress::componentFound(int iterations) {
    ++found_;
    if (display_ == Display::kLines) {
        std::printf("%s\n", componentText(found_, iterations).c_str());
        std::fflush(stdout);
    }
    iterations_ = 0;
    draw();
}

void Progress::vectorProduct(bool transposed) {
    if (!extracting_ || !transposed) return;
    ++iterations_;
    if (sinceDrawing_.seconds() >= kSecondsBetweenDrawings) draw();
}

void Progress::searching(std::string_view search, int iterations) {
    stage(search);
    iterations_ = iterations;
    if (sinceDrawing_.seconds() >= kSecondsBetweenDrawings) draw();
}

void Progress::clear() {
    if (!drawn_) return;
    std::fputs("\r\033[K", stdout);
    std::fflush(stdout);
    drawn_ = false;
}

// A carriage return cannot undo a wrapped line, and some terminals wrap at the last column.
void Progress::draw() {
    if (display_ != Display::kBar) return;
    std::printf("\r\033[K%s", text().substr(0, terminalWidth() - 1).c_str());
    std::fflush(stdout);
    drawn_ = true;
    sinceDrawing_ = Stopwatch();
}

std::string Progress::componentText(int number, int iterations) const {
    std::string line = "component " + std::to_string(number) + " of " + std::to_string(components_);
    if (display_ == Display::kBar) {
        const auto done = static_cast<std::size_t>(kBarWidth * found_ / std::max(components_, 1));
        line += " [" + std::string(done, '#') + std::string(kBarWidth - done, '.') + "]";
    }
    line += ", " + std::to_string(iterations) + " iterations";
    if (found_ > 0 && found_ < components_) {
        const double left = sinceStage_.seconds() / found_ * (components_ - found_);
        char seconds[48];
        std::snprintf(seconds, sizeof seconds, ", about %.0f s left", left);
        line += seconds;
    }
    return line;
}

// The current component is the one after those found.
std::string Progress::text() const {
    if (stage_ != "components") {
        return iterations_ == 0 ? stage_ : stage_ + ", " + std::to_string(iterations_) + " iterations";
    }
    return componentText(std::min(found_ + 1, components_), iterations_);
}

} // namespace zn::headless
