#include "attack/host/guarded_memory.h"

#include <stdexcept>

#include <sys/mman.h>
#include <unistd.h>

namespace zn::test {

namespace {

std::size_t pageSize() {
    static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

} // namespace

GuardedMemory::GuardedMemory(std::size_t bytes, Edge edge)
    : inner_((bytes + pageSize() - 1) / pageSize() * pageSize()) {
    void* mapping =
        mmap(nullptr, inner_ + 2 * pageSize(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, /*fd=*/-1, /*offset=*/0);
    if (mapping == MAP_FAILED) throw std::runtime_error("mmap");
    mapping_ = static_cast<unsigned char*>(mapping);
    if (mprotect(mapping_ + pageSize(), inner_, PROT_READ | PROT_WRITE) != 0) throw std::runtime_error("mprotect");
    data_ = mapping_ + pageSize() + (edge == Edge::end ? inner_ - bytes : 0);
}

GuardedMemory::~GuardedMemory() {
    munmap(mapping_, inner_ + 2 * pageSize());
}

void GuardedMemory::makeReadOnly() {
    if (mprotect(mapping_ + pageSize(), inner_, PROT_READ) != 0) throw std::runtime_error("mprotect");
}

} // namespace zn::test
