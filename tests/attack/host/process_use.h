#pragma once

#include <cstddef>

namespace zn::test {

/// What this process holds at the moment.
struct ProcessUse {
    std::size_t heapBytes = 0; ///< allocated and not freed, as the C library counts them; 0 under a sanitizer
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    std::size_t mappings = 0; ///< regions of address space

    static ProcessUse now();
};

} // namespace zn::test
