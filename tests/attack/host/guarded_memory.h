#pragma once

#include <cstddef>

namespace zn::test {

/// Memory between two pages whose access ends the process, so that a byte too many on one side does.
class GuardedMemory {
public:
    /// Which of the two pages the bytes touch; the other one is up to a page away.
    enum class Edge { start, end };

    GuardedMemory(std::size_t bytes, Edge edge);
    ~GuardedMemory();
    GuardedMemory(const GuardedMemory&) = delete;
    GuardedMemory& operator=(const GuardedMemory&) = delete;

    void* data() const { return data_; }

    /// From now on a write ends the process, too.
    void makeReadOnly();

private:
    std::size_t inner_; ///< bytes between the two pages
    unsigned char* mapping_;
    void* data_;
};

} // namespace zn::test
