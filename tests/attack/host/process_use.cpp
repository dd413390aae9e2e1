#include "attack/host/process_use.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <malloc.h>

namespace zn::test {

namespace {

std::size_t entriesOf(const char* folder) {
    namespace fs = std::filesystem;
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::size_t linesOf(const char* file) {
    std::ifstream in(file);
    return static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(in), {}, '\n'));
}

} // namespace

ProcessUse ProcessUse::now() {
    ProcessUse use;
#ifndef __SANITIZE_ADDRESS__ // which replaces the allocator
    const struct mallinfo2 heap = mallinfo2();
    use.heapBytes = heap.uordblks + heap.hblkhd;
#endif
    use.descriptors = entriesOf("/proc/self/fd");
    use.threads = entriesOf("/proc/self/task");
    use.mappings = linesOf("/proc/self/maps");
    return use;
}

} // namespace zn::test
