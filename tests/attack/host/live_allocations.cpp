#include "attack/host/live_allocations.h"

#include <atomic>

#ifndef __SANITIZE_ADDRESS__

#include <cerrno>

#include <malloc.h>

namespace {

std::atomic<std::size_t> liveBlocks = 0;
std::atomic<std::size_t> liveBytes = 0;

void* counted(void* block) {
    if (!block) return nullptr;
    ++liveBlocks;
    liveBytes += malloc_usable_size(block);
    return block;
}

void forget(void* block) {
    if (!block) return;
    --liveBlocks;
    liveBytes -= malloc_usable_size(block);
}

} // namespace

#define ZN_ALLOCATOR __attribute__((visibility("default")))

// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

ZN_ALLOCATOR void* malloc(std::size_t size) noexcept {
    return counted(__libc_malloc(size));
}

ZN_ALLOCATOR void* calloc(std::size_t count, std::size_t size) noexcept {
    return counted(__libc_calloc(count, size));
}

ZN_ALLOCATOR void* realloc(void* block, std::size_t size) noexcept {
    const std::size_t before = block ? malloc_usable_size(block) : 0;
    void* moved = __libc_realloc(block, size);
    if (!moved && size > 0) return nullptr; // the old block is still there
    if (block) {
        --liveBlocks;
        liveBytes -= before;
    }
    return counted(moved);
}

ZN_ALLOCATOR void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return counted(__libc_memalign(alignment, size));
}

ZN_ALLOCATOR void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return counted(__libc_memalign(alignment, size));
}

ZN_ALLOCATOR int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = counted(__libc_memalign(alignment, size));
    return *block ? 0 : ENOMEM;
}

ZN_ALLOCATOR void free(void* block) noexcept {
    forget(block);
    __libc_free(block);
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace zn::test {

LiveAllocations LiveAllocations::now() {
    return {liveBlocks, liveBytes};
}

} // namespace zn::test

#else

namespace zn::test {

LiveAllocations LiveAllocations::now() {
    return {};
}

} // namespace zn::test

#endif
