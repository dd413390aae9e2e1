#pragma once

#include "headless/failure/failure.h"
#include "headless/study/run_outcome.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace zn::headless {

/// How the runs of a study ended, taken together.
class StudySummary {
public:
    explicit StudySummary(std::size_t runs) : runs_(runs) {}

    void add(const std::string& run, const RunOutcome& outcome);
    /// After a failure with --stop-on-first-crash.
    void addNotStarted(const std::string& run) { notStarted_.push_back(run); }

    void addDenoised(const std::string& run, const RunOutcome& outcome) { denoised_[run] = outcome.status; }
    /// After a failure with --stop-on-first-crash.
    void addNotDenoised(const std::string& run) { notDenoised_.push_back(run); }
    /// A run that is not denoised because it has no labels.
    void addUnlabelled(const std::string& run) { unlabelled_.push_back(run); }
    /// A run of which nobody tried to make a denoised image, for whatever reason.
    void addNeverDenoised(const std::string& run) { neverDenoised_.push_back(run); }
    bool isStopped() const { return !notStarted_.empty(); }

    /// "12 of 15 runs done, 1 with fewer components, 1 without result: sub-03_task-rest, 1 without a new result:
    /// sub-04". Runs with fewer components are not among those done; those not started are named with those without
    /// result. If there is anything to say about denoising: "; 10 of 13 denoised, 1 failed: sub-02_task-rest, 2 without
    /// labels: sub-05_task-rest, sub-06_task-rest".
    std::string text() const;

    /// 0 when all are done, 4 when the worst has fewer components, else the smallest other status, also of those that
    /// could not be denoised.
    ExitStatus status() const;

private:
    std::string denoisingText() const;

    std::size_t runs_;
    std::map<std::string, int> statuses_;
    std::set<std::string> keepEarlier_; // of those without a result
    std::vector<std::string> notStarted_;
    std::map<std::string, int> denoised_;
    std::vector<std::string> notDenoised_;
    std::vector<std::string> unlabelled_;
    std::vector<std::string> neverDenoised_;
};

} // namespace zn::headless
