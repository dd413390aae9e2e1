#pragma once

#include "headless/host/session.h"
#include "headless/nifti/image_header.h"
#include "headless/run/run_options.h"

#include <cstdint>
#include <optional>
#include <string>

namespace zn::headless {

/// How much memory a run may use and how much it is going to use.
class MemoryCheck {
public:
    /// The budget is that of the options, else what the machine has free now.
    MemoryCheck(const RunOptions& options, const ImageHeader& functional, const Session& session);

    std::int64_t predictedBytes(std::int64_t voxels) const;
    /// "Memory: about 0.42 GiB at the peak (38000 voxels); 22.1 GiB are free."
    std::string note(std::int64_t voxels) const;
    /// Throws Failure (kMemory) when the prediction for this many voxels exceeds the budget.
    void requireEnough(std::int64_t voxels) const;

private:
    std::string budgetText() const;

    const RunOptions& options_;
    const ImageHeader& functional_;
    int regions_;
    std::optional<std::int64_t> budget_; // nothing: the system does not tell
};

} // namespace zn::headless
