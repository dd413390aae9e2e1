#pragma once

#include "headless/study/study_options.h"

#include <cstddef>
#include <cstdint>

namespace zn::headless {

/// How many runs may be under way at once.
struct Capacity {
    int processors = 1;      ///< for all runs together
    int threads = 1;         ///< of each run
    std::int64_t memory = 0; ///< bytes for all runs together

    /// Whether another run may start: a processor for each of its threads and its predicted memory must be free. A run
    /// that does not fit at all starts alone, and says so itself.
    ///
    ///   running    number of runs under way
    ///   reserved   bytes predicted for them
    ///   needed     bytes predicted for the next one
    bool fits(std::size_t running, std::int64_t reserved, std::int64_t needed) const;
};

/// From the options, else what the machine, the control group or the batch job has left. Without --threads the
/// processors are shared out evenly among as many runs as there are and as fit into the memory.
///
///   runs     number of runs to start
///   needed   bytes predicted for one of them
Capacity capacityFor(const StudyOptions& options, std::size_t runs, std::int64_t needed);

} // namespace zn::headless
