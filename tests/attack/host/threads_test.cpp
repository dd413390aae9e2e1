// Other threads than the one on which the plug-in was made, threads that load libraries meanwhile, and a host whose
// event loop starts the plug-in again while it runs.

#include "attack/host/hostile_fixture.h"
#include "attack/host/run_record.h"

#include "host/shared_library.h"

#include <array>
#include <atomic>
#include <thread>

#include <pthread.h>

namespace zn::test {
namespace {

class Threads : public HostileFixture {
protected:
    Threads() {
        attack("nothing");
        record = recordOfRun(host);
        restoreHost();
    }

    void expectRecord() const { EXPECT_TRUE(recordOfRun(host) == record); }

    std::string record;
};

TEST_F(Threads, MayInitialiseAndRunInTurn) {
    std::thread([&] { EXPECT_TRUE(plugin.initPlugin()); }).join();
    for (int i = 0; i < 3; ++i) {
        restoreHost();
        std::thread([&] { EXPECT_TRUE(plugin.execute()); }).join();
        expectRecord();
    }
    restoreHost();
    EXPECT_TRUE(plugin.execute());
    expectRecord();
}

TEST_F(Threads, MayThrowFromTheHostWhileTheyRun) {
    ASSERT_TRUE(plugin.initPlugin());
    host.misbehaviour.beforeCall = [](const std::string& function) {
        if (function == "znGetTextInput") throw std::runtime_error("on another thread");
    };
    std::thread([&] { EXPECT_FALSE(plugin.execute()); }).join();
    EXPECT_EQ(host.boxes().back(), "on another thread");
}

void* executeOn(void* plugin) {
    return static_cast<PluginUnderTest*>(plugin)->execute() ? plugin : nullptr;
}

TEST_F(Threads, MayHaveASmallStack) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs more of the stack than the plug-in";
#endif
    ASSERT_TRUE(plugin.initPlugin());
    host.calls.clear();
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 64U << 10U), 0);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(&thread, &attributes, executeOn, &plugin), 0);
    void* result = nullptr;
    ASSERT_EQ(pthread_join(thread, &result), 0);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(result, &plugin);
    expectRecord();
}

TEST_F(Threads, MayLoadLibrariesMeanwhile) {
    std::atomic<bool> done = false;
    std::atomic<int> loads = 0;
    std::array<std::thread, 3> loaders;
    for (std::thread& loader : loaders) {
        loader = std::thread([&] {
            while (!done) {
                const SharedLibrary library(ZN_OTHER_LIBRARY);
                ++loads;
            }
        });
    }
    for (int i = 0; i < 300; ++i) EXPECT_TRUE(plugin.initPlugin());
    for (int i = 0; i < 30; ++i) {
        restoreHost();
        EXPECT_TRUE(attack("libraries being loaded"));
        expectRecord();
    }
    done = true;
    for (std::thread& loader : loaders) loader.join();
    EXPECT_GT(loads, 0);
}

// A modal box or a redraw may process the user's events: the plug-in is started again from inside its own run.
TEST_F(Threads, MayStartTheRunAgainFromInsideIt) {
    ASSERT_TRUE(plugin.initPlugin());
    for (const std::string function : {"znUpdateActiveWindow", "znGetTextInput", "znLogText", "znShowBusyCursor"}) {
        restoreHost();
        int runs = 0;
        int calls = 0;
        host.misbehaviour.beforeCall = [&](const std::string& called) {
            // Once: the inner run is an ordinary one.
            if (called != function || calls++ != 0) return;
            PluginUnderTest another;
            EXPECT_TRUE(another.initPlugin());
            EXPECT_TRUE(another.execute());
            ++runs;
            host.calls.clear();
        };
        EXPECT_TRUE(plugin.execute()) << function;
        EXPECT_EQ(runs, 1) << function;
        EXPECT_EQ(host.log().back(), " ") << function;
        EXPECT_EQ(host.maps.size(), 3U) << function;
    }
    expectNoHarm("runs inside runs");
}

} // namespace
} // namespace zn::test
