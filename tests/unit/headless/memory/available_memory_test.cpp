// Available memory as derived from simulated system files.
#include "headless/memory/available_memory.h"

#include "files.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

namespace fs = std::filesystem;

class AvailableMemory : public testing::Test {
protected:
    void write(const std::string& file, const std::string& text) const {
        fs::create_directories((root / file).parent_path());
        writeFile(root / file, text);
    }
    // The machine has 1000 KiB available.
    void writeMachine() const {
        write("proc/meminfo", "MemTotal:        9000 kB\nMemFree:          500 kB\nMemAvailable:    1000 kB\n");
    }

    const TemporaryFolder folder;
    const fs::path& root = folder.path();
};

TEST_F(AvailableMemory, IsUnknownWithoutSystemFiles) {
    EXPECT_EQ(availableMemoryBytes(root), std::nullopt);
}

TEST_F(AvailableMemory, IsWhatTheMachineHasWithoutSwapping) {
    writeMachine();
    EXPECT_EQ(availableMemoryBytes(root), 1000 * 1024);
}

TEST_F(AvailableMemory, IsLimitedByTheControlGroup) {
    writeMachine();
    write("proc/self/cgroup", "0::/job/step\n");
    write("sys/fs/cgroup/job/step/memory.max", "600000\n");
    write("sys/fs/cgroup/job/step/memory.current", "200000\n");
    EXPECT_EQ(availableMemoryBytes(root), 400000);
}

TEST_F(AvailableMemory, CountsDroppableFileCacheAsFree) {
    write("proc/self/cgroup", "0::/job\n");
    write("sys/fs/cgroup/job/memory.max", "600000\n");
    write("sys/fs/cgroup/job/memory.current", "500000\n");
    write("sys/fs/cgroup/job/memory.stat", "anon 100000\ninactive_file 300000\nactive_file 100000\n");
    EXPECT_EQ(availableMemoryBytes(root), 400000);
}

TEST_F(AvailableMemory, IsLimitedByAParentGroup) {
    write("proc/self/cgroup", "0::/job/step\n");
    write("sys/fs/cgroup/job/memory.max", "300000\n");
    write("sys/fs/cgroup/job/memory.current", "200000\n");
    write("sys/fs/cgroup/job/step/memory.max", "600000\n");
    write("sys/fs/cgroup/job/step/memory.current", "200000\n");
    EXPECT_EQ(availableMemoryBytes(root), 100000);
}

TEST_F(AvailableMemory, ReadsTheFirstVersionOfTheInterface) {
    write("proc/self/cgroup", "5:cpu,cpuacct:/\n4:cpuset,memory:/batch\n");
    write("sys/fs/cgroup/memory/batch/memory.limit_in_bytes", "800000\n");
    write("sys/fs/cgroup/memory/batch/memory.usage_in_bytes", "100000\n");
    EXPECT_EQ(availableMemoryBytes(root), 700000);
}

TEST_F(AvailableMemory, FindsAContainersGroupAtTheTopOfTheMount) {
    write("proc/self/cgroup", "4:memory:/docker/0123456789\n");
    write("sys/fs/cgroup/memory/memory.limit_in_bytes", "800000\n");
    write("sys/fs/cgroup/memory/memory.usage_in_bytes", "100000\n");
    EXPECT_EQ(availableMemoryBytes(root), 700000);
}

TEST_F(AvailableMemory, IsNotLimitedByAGroupWithoutALimit) {
    writeMachine();
    write("proc/self/cgroup", "0::/\n");
    write("sys/fs/cgroup/memory.max", "max\n");
    write("sys/fs/cgroup/memory.current", "200000\n");
    EXPECT_EQ(availableMemoryBytes(root), 1000 * 1024);
}

TEST_F(AvailableMemory, IsZeroInAGroupOverItsLimit) {
    write("proc/self/cgroup", "0::/job\n");
    write("sys/fs/cgroup/job/memory.max", "100\n");
    write("sys/fs/cgroup/job/memory.current", "200\n");
    EXPECT_EQ(availableMemoryBytes(root), 0);
}

} // namespace
} // namespace zn::test
