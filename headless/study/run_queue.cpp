#include "headless/study/run_queue.h"

#include "headless/failure/as_failure.h"
#include "headless/text/byte_sizes.h"

#include <cstdio>
#include <exception>
#include <utility>

namespace zn::headless {

namespace fs = std::filesystem;

namespace {

std::string memoryText(std::int64_t bytes) {
    char text[32];
    const bool large = bytes >= std::int64_t{1} << 30;
    std::snprintf(text, sizeof text, large ? "%.1f GiB" : "%.0f MiB",
                  static_cast<double>(bytes) / (large ? kBytesPerGib : 1048576.0));
    return text;
}

} // namespace

RunQueue::RunQueue(RunTask& task, std::deque<const PlannedRun*> runs, const StudyOptions& options,
                   std::function<std::string()> summary)
    : task_(task), options_(options), folder_(options.out), summary_(std::move(summary)),
      progress_(runs.size(), options.run.control.quiet), waiting_(std::move(runs)) {}

void RunQueue::carryOut(UnfinishedWork& unfinished) {
    if (!waiting_.empty()) settleCapacity();
    unfinished.atInterrupt([this] { return endRuns(); });
    while (!waiting_.empty() || !active_.empty()) step();
    progress_.clear();
    unfinished.atInterrupt({});
}

void RunQueue::settleCapacity() {
    next_ = task_.predictedBytes(*waiting_.front());
    capacity_ = capacityFor(options_, waiting_.size(), *next_);
    if (options_.run.control.quiet) return;
    std::printf("%s: %zu; processors: %d; threads per run: %d; memory: %s.\n", task_.heading(), waiting_.size(),
                capacity_.processors, capacity_.threads, memoryText(capacity_.memory).c_str());
    std::fflush(stdout);
}

void RunQueue::step() {
    constexpr int kRedrawing = 1000; // milliseconds
    std::vector<int> descriptors;
    {
        const std::scoped_lock lock(guard_);
        startRuns();
        std::vector<std::string> names;
        for (const ActiveRun& run : active_) {
            descriptors.push_back(run.process().descriptor());
            names.push_back(run.run().name);
        }
        progress_.draw(names);
    }
    if (!descriptors.empty()) waitForAny(descriptors, kRedrawing);
    const std::scoped_lock lock(guard_);
    collect();
}

void RunQueue::startRuns() {
    while (!waiting_.empty()) {
        if (!next_) next_ = task_.predictedBytes(*waiting_.front());
        std::int64_t reserved = 0;
        for (const ActiveRun& run : active_) reserved += run.needed();
        if (!capacity_.fits(active_.size(), reserved, *next_)) return;
        const PlannedRun& run = *waiting_.front();
        start(run, *next_);
        next_.reset();
        if (!waiting_.empty() && waiting_.front() == &run) waiting_.pop_front();
    }
}

void RunQueue::start(const PlannedRun& run, std::int64_t needed) {
    try {
        task_.requirePossible(run);
        active_.emplace_back(run, folder_, task_.log(run), task_.arguments(run, capacity_.threads, capacity_.memory),
                             needed);
    } catch (const std::exception& error) {
        const Failure failure = asFailure(error);
        conclude(run, {static_cast<int>(failure.status()), failure.what(), 0.0, 0}, {});
    }
}

void RunQueue::collect() {
    for (auto run = active_.begin(); run != active_.end();) {
        auto outcome = run->ended();
        if (outcome) outcome->message = task_.inTermsOfStudy(outcome->message);
        if (outcome) conclude(run->run(), *outcome, run->result());
        run = outcome ? active_.erase(run) : std::next(run);
    }
}

void RunQueue::conclude(const PlannedRun& run, RunOutcome outcome, const fs::path& result) {
    try {
        task_.keep(run, outcome, result);
    } catch (const std::exception& error) {
        const Failure failure = asFailure(error);
        outcome.status = static_cast<int>(failure.status());
        outcome.message = failure.what();
    }
    outcome.keepsEarlier = !outcome.hasResult() && isOfResult(task_.record(run));
    task_.ended(run, outcome);
    progress_.ended(task_.text(run, outcome));
    if (outcome.hasResult() || !options_.stopOnFirstCrash) return;
    for (const PlannedRun* left : waiting_) {
        if (left != &run) task_.notStarted(*left);
    }
    waiting_.clear();
}

// On the thread that deals with signals; the process ends afterwards.
std::string RunQueue::endRuns() {
    guard_.lock(); // for good
    for (const ActiveRun& run : active_) run.process().terminate();
    active_.clear();
    return summary_() + "; give the same command again to continue.";
}

} // namespace zn::headless
