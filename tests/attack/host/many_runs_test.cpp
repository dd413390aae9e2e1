// Runs without end, and the plug-in loaded and unloaded again and again: nothing is left behind.

#include "attack/host/hostile_fixture.h"
#include "attack/host/loaded_plugin.h"
#include "attack/host/process_use.h"
#include "attack/host/run_record.h"

#include <limits>
#include <stdexcept>

#include <dlfcn.h>

namespace zn::test {
namespace {

class ManyRuns : public HostileFixture {
protected:
    // One run of each kind of end.
    void runInAllWays() {
        restoreHost();
        EXPECT_TRUE(attack("complete"));
        restoreHost();
        host.dialogIntegers[8] = 0;
        EXPECT_TRUE(attack("no component"));
        restoreHost();
        host.floats[15] = std::numeric_limits<float>::quiet_NaN();
        EXPECT_FALSE(attack("fatal error"));
        restoreHost();
        host.mask->assign(host.mask->size(), 0);
        EXPECT_FALSE(attack("no voxel"));
        restoreHost();
        host.misbehaviour.beforeCall = [](const std::string& function) {
            if (function == "znGetTextInput") throw std::runtime_error("a host that fails late");
        };
        EXPECT_FALSE(plugin.execute());
        restoreHost();
    }

    // One run of a plug-in that is loaded for it; returns its record.
    std::string runLoaded(int flags) {
        const std::string name = "ReloadedPlugin.so";
        restoreHost();
        {
            LoadedPlugin loaded(name, flags);
            EXPECT_TRUE(loaded.initPlugin());
            host.calls.clear();
            EXPECT_TRUE(loaded.execute());
        }
        EXPECT_FALSE(LoadedPlugin::isLoaded(name));
        return recordOfRun(host);
    }
};

TEST_F(ManyRuns, LeaveNothingBehind) {
    for (int i = 0; i < 10; ++i) runInAllWays(); // the C library's buffers have their size now
    const ProcessUse before = ProcessUse::now();
    for (int i = 0; i < 60; ++i) runInAllWays(); // 300 runs
    expectNoGrowth(before, ProcessUse::now());
    expectNoHarm("300 runs");
}

TEST_F(ManyRuns, OfAPluginThatIsLoadedForEachOfThemLeaveNothingBehind) {
    const std::string record = runLoaded(RTLD_GLOBAL);
    for (int i = 0; i < 5; ++i) runLoaded(RTLD_GLOBAL);
    const ProcessUse before = ProcessUse::now();
    for (int i = 0; i < 50; ++i) ASSERT_TRUE(runLoaded(i % 2 == 0 ? RTLD_LOCAL : RTLD_GLOBAL) == record) << i;
    expectNoGrowth(before, ProcessUse::now());
}

TEST_F(ManyRuns, OfTwoCopiesLoadedForAllToSeeAreIndependent) {
    attack("nothing");
    const std::string record = recordOfRun(host);
    LoadedPlugin first("FirstPlugin.so", RTLD_GLOBAL);
    LoadedPlugin second("SecondPlugin.so", RTLD_GLOBAL);
    ASSERT_TRUE(first.initPlugin());
    restoreHost();
    EXPECT_FALSE(second.execute()) << "initialising one copy must not initialise the other";
    EXPECT_TRUE(host.calls.empty());
    ASSERT_TRUE(second.initPlugin());
    for (LoadedPlugin* copy : {&first, &second, &first}) {
        restoreHost();
        EXPECT_TRUE(copy->execute());
        EXPECT_TRUE(recordOfRun(host) == record);
    }
}

TEST_F(ManyRuns, EndAtOnceWhereTheInitialisationHasFailed) {
    LoadedPlugin fresh("FreshPlugin.so", RTLD_LOCAL);
    host.calls.clear();
    EXPECT_FALSE(fresh.execute());
    EXPECT_TRUE(host.calls.empty());
    host.version = {1, 0, 0};
    EXPECT_FALSE(fresh.initPlugin());
    host.calls.clear();
    EXPECT_FALSE(fresh.execute());
    EXPECT_TRUE(host.calls.empty());
    host.version = {2, 2, 0};
    EXPECT_TRUE(fresh.initPlugin());
    EXPECT_TRUE(fresh.execute());
}

} // namespace
} // namespace zn::test
