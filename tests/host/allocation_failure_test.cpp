// Makes every allocation of the plug-in fail in turn: each time the user is told, the busy cursor is stopped, the run
// returns true, and nothing leaks (LeakSanitizer checks). The plug-in's code is linked into this program so that the
// linker can replace the standard allocators by these.

#include "host/scratch_directory.h"
#include "host/scripted_host.h"
#include "host/simulated_vtc.h"

#include "plugin/run_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <new>

namespace {

bool inPlugin = false;
int allocationsLeft = -1; // negative: all succeed

bool fails() {
    if (!inPlugin || allocationsLeft < 0) return false;
    return allocationsLeft-- == 0;
}

} // namespace

// The names that the linker's --wrap asks for.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real__Znwm(std::size_t size); // operator new

void* __wrap_malloc(std::size_t size) {
    return fails() ? nullptr : __real_malloc(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : __real_calloc(count, size);
}

void* __wrap__Znwm(std::size_t size) {
    if (fails()) throw std::bad_alloc();
    return __real__Znwm(size);
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace zn::test {
namespace {

class AllocationFailure : public testing::Test {
protected:
    AllocationFailure() {
        host = ScriptedHost{};
        giveSimulatedVtc(host, 8, 6, 5, 12, 3);
        host.dialogStrings[3] = "design.rtc";
        host.dialogStrings[4] = "regions.voi";
        host.vois = {{60, 60, 60, 63, 60, 60}};
        host.predictors.assign(1, std::vector<float>(12, 0.5f));
        onHostEntered = [] { inPlugin = false; };
        onHostLeft = [] { inPlugin = true; };
        EXPECT_TRUE(initialisePlugin());
    }
    ~AllocationFailure() override {
        onHostEntered = onHostLeft = nullptr;
        inPlugin = false;
    }

    // A run in which allocation number `index`, from 0, fails; true if the run made that many.
    bool runWithFailure(int index) {
        host.calls.clear();
        allocationsLeft = index;
        inPlugin = true;
        result = executeRun();
        inPlugin = false;
        const bool failed = allocationsLeft < 0;
        allocationsLeft = -1;
        return failed;
    }

    ScriptedHost& host = scripted();
    ScratchDirectory directory;
    bool result = false;
};

TEST_F(AllocationFailure, EndsTheRunWithTheMemoryTextsWhereverItHappens) {
    int index = 0;
    for (; runWithFailure(index); ++index) {
        ASSERT_TRUE(result) << index;
        ASSERT_THAT(host.boxes(), testing::ElementsAre("Working memory full. Exiting plugin.")) << index;
        ASSERT_EQ(host.log().back(), "// Plugin > Working memory full. Exiting plugin.") << index;
        ASSERT_FALSE(host.isBusy()) << index;
    }
    EXPECT_GT(index, 40); // at least this many: the data, the engine, the results
    EXPECT_TRUE(result);
    EXPECT_EQ(host.log().back(), " ") << "the run in which nothing fails is complete";
}

} // namespace
} // namespace zn::test
