#pragma once

#include "headless/failure/as_failure.h"

#include <exception>
#include <string>
#include <vector>

namespace zn::headless {

/// What is wrong with the runs of a list, so that all of it can be said at once.
class RunProblems {
public:
    /// Carries out `work`, which throws Failure (kInput) for a run that cannot be used; other failures are passed on.
    template <typename Work> void collect(Work work) {
        try {
            work();
        } catch (const std::exception& error) {
            const Failure failure = asFailure(error);
            if (failure.status() != ExitStatus::kInput) throw;
            add(failure.what());
        }
    }
    void add(std::string sentence) { sentences_.push_back(std::move(sentence)); }

    /// Throws Failure (kInput) unless nothing was collected: the sentence, or of several "3 runs cannot take part: "
    /// and the first five of them.
    void throwIfAny() const;

private:
    std::vector<std::string> sentences_;
};

} // namespace zn::headless
