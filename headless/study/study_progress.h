#pragma once

#include "headless/run/stopwatch.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zn::headless {

/// The progress of a study on standard output: a line for each run that has ended and, on a terminal, a line that is
/// redrawn with the runs under way. The time left is the mean time per run so far times the number of runs left.
class StudyProgress {
public:
    /// `runs`: number of runs to come; `quiet`: print nothing.
    StudyProgress(std::size_t runs, bool quiet);

    void ended(const std::string& text);
    void draw(const std::vector<std::string>& underWay);
    void clear();

private:
    std::string timeLeft() const;

    std::size_t runs_;
    std::size_t ended_ = 0;
    bool quiet_;
    bool terminal_;
    bool drawn_ = false;
    Stopwatch since_;
};

/// "about 40 s", "about 12 min", "about 3.5 h"
std::string durationText(double seconds);

} // namespace zn::headless
