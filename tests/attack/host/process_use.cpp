#include "attack/host/process_use.h"

#include "attack/host/live_allocations.h"

#include <filesystem>
#include <iterator>

#include <gtest/gtest.h>

#include <link.h>

namespace zn::test {

namespace {

std::size_t entriesOf(const char* folder) {
    namespace fs = std::filesystem;
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

int countModule(dl_phdr_info* /*info*/, std::size_t /*size*/, void* count) {
    ++*static_cast<std::size_t*>(count);
    return 0;
}

} // namespace

ProcessUse ProcessUse::now() {
    ProcessUse use;
    use.descriptors = entriesOf("/proc/self/fd");
    use.threads = entriesOf("/proc/self/task");
    dl_iterate_phdr(countModule, &use.modules);
    const LiveAllocations heap = LiveAllocations::now();
    use.blocks = heap.blocks;
    use.bytes = heap.bytes;
    return use;
}

void expectNoGrowth(const ProcessUse& before, const ProcessUse& after) {
    EXPECT_EQ(after.descriptors, before.descriptors);
    EXPECT_EQ(after.threads, before.threads);
    EXPECT_EQ(after.modules, before.modules);
    EXPECT_EQ(after.blocks, before.blocks);
    // As many blocks: each may now be up to 31 bytes larger than was asked for.
    EXPECT_LT(after.bytes, before.bytes + 2048);
}

} // namespace zn::test
