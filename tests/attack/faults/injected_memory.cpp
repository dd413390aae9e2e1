// Allocations on the main thread, and new threads.
#include "attack/faults/injector.h"

#include <cerrno>
#include <cstddef>

#include <dlfcn.h>
#include <pthread.h>

using zn::test::Call;
using zn::test::Disturbance;
using zn::test::isCounting;
using zn::test::isMainThread;

// The C library's own names for its functions. Asking dlsym for them would allocate.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}

namespace {

template <class Allocate> void* allocated(Allocate allocate) {
    if (!isCounting() || !isMainThread()) return allocate();
    const Disturbance disturbance(Call::kAllocate);
    return disturbance.fails() ? nullptr : allocate();
}

} // namespace

#pragma GCC visibility push(default)
extern "C" {

void* malloc(std::size_t size) noexcept {
    return allocated([&] { return __libc_malloc(size); });
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    return allocated([&] { return __libc_calloc(count, size); });
}

void* realloc(void* block, std::size_t size) noexcept {
    return allocated([&] { return __libc_realloc(block, size); });
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return allocated([&] { return __libc_memalign(alignment, size); });
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
    *block = allocated([&] { return __libc_memalign(alignment, size); });
    return *block ? 0 : ENOMEM;
}

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
    static const auto real = reinterpret_cast<decltype(&pthread_create)>(dlsym(RTLD_NEXT, "pthread_create"));
    if (!isCounting()) return real(thread, attributes, start, argument);
    const Disturbance disturbance(Call::kThread);
    return disturbance.fails() ? errno : real(thread, attributes, start, argument);
}

} // extern "C"
#pragma GCC visibility pop
