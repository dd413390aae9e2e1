// In place of headless/memory/available_memory.cpp: what counts is the memory of the WebAssembly module, which grows up
// to a limit and never shrinks.
#include "headless/memory/available_memory.h"

#include <emscripten/heap.h>
#include <malloc.h>
#include <unistd.h>

namespace zn::headless {

std::optional<std::int64_t> availableMemoryBytes(const std::filesystem::path&) {
    const auto most = static_cast<std::int64_t>(emscripten_get_heap_max());
    const auto grown = static_cast<std::int64_t>(emscripten_get_heap_size());
    const auto free = static_cast<std::int64_t>(mallinfo().fordblks);
    return most - grown + free;
}

std::optional<std::int64_t> usableMemoryBytes() {
    return availableMemoryBytes(); // no batch job here
}

std::optional<std::int64_t> addressSpaceLeftBytes() {
    return std::nullopt;
}

std::int64_t peakMemoryBytes() {
    return static_cast<std::int64_t>(emscripten_get_heap_size());
}

} // namespace zn::headless
