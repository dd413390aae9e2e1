#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/host/session.h"
#include "headless/run/progress.h"
#include "headless/symmetric/separate_symmetrically.h"

#include <cstdint>
#include <optional>

namespace zn::headless {

/// Finds the components of a run by the symmetric estimate, shows its progress and logs each start and the end.
class SymmetricSeparator : public Separator {
public:
    /// The arguments outlive this.
    SymmetricSeparator(WorkerThreads& team, SessionEvents& events, Progress& progress, int starts, std::uint32_t seed)
        : team_(team), events_(events), progress_(progress), starts_(starts), seed_(seed) {}

    int separate(const SeparationRequest& request, double* vectors) override;

    /// Of the last separation; nothing before.
    const std::optional<SymmetricFacts>& facts() const { return facts_; }

private:
    void show(const SymmetricProgress& state);
    void log(const SymmetricResult& result, const SeparationRequest& request);

    WorkerThreads& team_;
    SessionEvents& events_;
    Progress& progress_;
    int starts_;
    std::uint32_t seed_;
    std::optional<SymmetricFacts> facts_;
};

} // namespace zn::headless
