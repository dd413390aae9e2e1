// Which module of the process the plug-in takes as its host, and what it needs to find there. This program does not
// have a host's name, so that only the modules it loads can be the host.

#include "host/plugin_under_test.h"
#include "host/shared_library.h"

#include "host/host_api.h"

#include <atomic>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace zn::test {
namespace {

// A small host module, loaded for as long as this object lives.
class Module {
public:
    explicit Module(const std::string& file) : library_(ZN_SMALL_HOSTS "/" + file) {}

    int timesAsked() const { return *static_cast<int*>(library_.address("smallHostAsked")); }
    std::string message() const { return *static_cast<const char**>(library_.address("smallHostMessage")); }

private:
    SharedLibrary library_;
};

TEST(HostBinding, FailsWithoutAHostInTheProcess) {
    PluginUnderTest plugin;
    EXPECT_FALSE(plugin.initPlugin());
    EXPECT_FALSE(bindHostApi());
    EXPECT_FALSE(bindHostMatrixProducts());
}

TEST(HostBinding, IgnoresAModuleWhoseNameOnlyStartsLikeTheHosts) {
    const Module other("other/TesmiraZNViewer.exe");
    EXPECT_FALSE(bindHostApi());
}

void expectFound(const std::string& file) {
    const Module module(file);
    PluginUnderTest plugin;
    EXPECT_TRUE(plugin.initPlugin()) << file;
    EXPECT_EQ(module.timesAsked(), 1) << file;
}

TEST(HostBinding, FindsEitherName) {
    expectFound("first/Tesmira.exe");
    expectFound("second/TesmiraZN.exe");
}

#ifndef _WIN32 // programs have no such suffix here
TEST(HostBinding, FindsEitherNameWithoutTheExecutableSuffix) {
    expectFound("first_bare/Tesmira");
    expectFound("second_bare/TesmiraZN");
}
#endif

TEST(HostBinding, PrefersTesmiraWhenBothHostsAreLoaded) {
    const Module second("second/TesmiraZN.exe");
    const Module first("first/Tesmira.exe");
    PluginUnderTest plugin;
    EXPECT_TRUE(plugin.initPlugin());
    EXPECT_EQ(first.timesAsked(), 1);
    EXPECT_EQ(second.timesAsked(), 0);
}

// A library that is loaded meanwhile takes the dynamic linker's locks, too: binding must not wait for it while it waits
// for binding.
TEST(HostBinding, EndsWhileAnotherThreadLoadsLibraries) {
    const Module module("first/Tesmira.exe");
    std::atomic<bool> done = false;
    std::thread loader([&done] {
        while (!done) const Module other("other/TesmiraZNViewer.exe");
    });
    for (int i = 0; i < 1000; ++i) ASSERT_TRUE(bindHostApi());
    done = true;
    loader.join();
}

TEST(HostBinding, FailsWithoutTheVersionFunction) {
    const Module module("no_version/Tesmira.exe");
    PluginUnderTest plugin;
    EXPECT_FALSE(plugin.initPlugin());
    EXPECT_FALSE(bindHostApi());
}

// The preferred module decides, even when the other one could have served.
TEST(HostBinding, DoesNotFallBackToTesmiraZNWhenTesmiraLacksTheVersionFunction) {
    const Module first("no_version/Tesmira.exe");
    const Module second("second/TesmiraZN.exe");
    EXPECT_FALSE(bindHostApi());
}

TEST(HostBinding, SucceedsWithoutAPlotFunctionAndLeavesItNull) {
    const Module module("no_bars/Tesmira.exe");
    EXPECT_TRUE(bindHostApi());
    EXPECT_EQ(host().znPlotBars, nullptr);
    EXPECT_NE(host().znLogText, nullptr);
}

TEST(HostBinding, OfTheProductsFailsWhenOnlyTheLastOneIsMissing) {
    const Module module("no_vector_product/Tesmira.exe");
    EXPECT_TRUE(bindHostApi());
    EXPECT_FALSE(bindHostMatrixProducts());
    EXPECT_NE(products().zn_intel_matrix_matrix_mult_d, nullptr);
}

TEST(HostBinding, TellsTheUserThatTheProductsAreMissing) {
    const Module module("no_vector_product/Tesmira.exe");
    PluginUnderTest plugin;
    EXPECT_FALSE(plugin.initPlugin());
    EXPECT_EQ(module.message(), "Can not execute this plugin - no access to MKL provided.");
}

} // namespace
} // namespace zn::test
