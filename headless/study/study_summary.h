#pragma once

#include "headless/failure/failure.h"
#include "headless/study/run_outcome.h"

#include <map>
#include <string>

namespace zn::headless {

/// How the runs of a study ended, taken together.
class StudySummary {
public:
    explicit StudySummary(std::size_t runs) : runs_(runs) {}

    void add(const std::string& run, const RunOutcome& outcome) { statuses_[run] = outcome.status; }
    /// After a failure with --stop-on-first-crash.
    void addNotStarted(const std::string& run) { notStarted_.push_back(run); }

    /// "12 of 14 runs done, 1 with fewer components, 1 without result: sub-03_task-rest". Runs with fewer components
    /// are not among those done; those not started are named with those without result.
    std::string text() const;

    /// 0 when all are done, 4 when the worst has fewer components, else the smallest other status.
    ExitStatus status() const;

private:
    std::size_t runs_;
    std::map<std::string, int> statuses_;
    std::vector<std::string> notStarted_;
};

} // namespace zn::headless
