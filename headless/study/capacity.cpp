#include "headless/study/capacity.h"

#include "headless/blas/matrix_products.h"
#include "headless/memory/available_memory.h"

#include <algorithm>
#include <limits>

namespace zn::headless {

bool Capacity::fits(std::size_t running, std::int64_t reserved, std::int64_t needed) const {
    if (running == 0) return true;
    const bool processorsLeft = (static_cast<std::int64_t>(running) + 1) * threads <= processors;
    return processorsLeft && needed <= memory - reserved;
}

Capacity capacityFor(const StudyOptions& options, std::size_t runs, std::int64_t needed) {
    Capacity capacity;
    capacity.processors = MatrixProducts::threadsFor(options.processors);
    const auto free = options.memoryBytes ? options.memoryBytes : usableMemoryBytes();
    capacity.memory = free.value_or(std::numeric_limits<std::int64_t>::max());
    const std::int64_t fitting = std::max<std::int64_t>(capacity.memory / std::max<std::int64_t>(needed, 1), 1);
    const std::int64_t atOnce = std::max<std::int64_t>(
        std::min({std::int64_t{capacity.processors}, static_cast<std::int64_t>(runs), fitting}), 1);
    const auto shared = static_cast<int>(capacity.processors / atOnce);
    capacity.threads = options.run.control.threads.value_or(std::max(shared, 1));
    return capacity;
}

} // namespace zn::headless
