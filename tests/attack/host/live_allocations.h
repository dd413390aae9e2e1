#pragma once

#include <cstddef>

namespace zn::test {

/// What this process, all its libraries included, has allocated on the heap and not freed. Counted by allocators that
/// stand before those of the C library; always 0 under a sanitizer, which has its own.
struct LiveAllocations {
    std::size_t blocks = 0;
    std::size_t bytes = 0; ///< usable ones: a block may be a few bytes larger than was asked for

    static LiveAllocations now();
};

} // namespace zn::test
