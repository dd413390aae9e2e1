#pragma once

#include <cstddef>

namespace zn::test {

/// What this process holds at the moment.
struct ProcessUse {
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    std::size_t modules = 0; ///< loaded programs and libraries

    std::size_t blocks = 0; ///< on the heap
    std::size_t bytes = 0;  ///< in these

    static ProcessUse now();
};

/// Expects that no run in between has left anything behind.
void expectNoGrowth(const ProcessUse& before, const ProcessUse& after);

} // namespace zn::test
