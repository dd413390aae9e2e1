// The three functions that compilers for the Microsoft C++ ABI call implicitly: operator new, operator delete, and the
// handler of pure virtual calls. They use the C library that the whole plug-in is linked with, so that what
// createPlugin allocates here is also freed here, whatever library the host uses.

#include <new>

extern "C" {

void* malloc(std::size_t size);
void free(void* block);
[[noreturn]] void abort();

/// Fills the virtual-table slots of pure virtual functions.
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
