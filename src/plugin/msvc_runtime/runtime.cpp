// The three things that compilers for the Microsoft C++ ABI call on their own: memory for an object, its release, and
// the end after a pure virtual call. They rest on the C library that the whole plug-in is linked with, so that what
// createPlugin makes here is also released here, whatever library the host has.

#include <new>

extern "C" {

void* malloc(std::size_t size);
void free(void* block);
[[noreturn]] void abort();

/// Stands in the slots of operations that a class leaves to its heirs.
int _purecall() { // NOLINT(bugprone-reserved-identifier): the name is part of the ABI
    abort();
}
}

namespace std {

const nothrow_t nothrow; // NOLINT(cert-dcl58-cpp): there is no other standard library here

} // namespace std

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return malloc(size);
}

// NOLINTNEXTLINE(misc-new-delete-overloads): nothing here throws
void operator delete(void* block) noexcept {
    free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    free(block);
}
