// Which module of the process the plug-in takes for its host, and what it needs to find there. This program is not
// named as a host, so that only the modules it loads can be one.

#include "host/plugin_under_test.h"

#include "host/host_api.h"

#include <gtest/gtest.h>

#include <string>

#include <dlfcn.h>

namespace zn::testing {
namespace {

// A small host module, loaded for as long as this object lives.
class Module {
public:
    explicit Module(const std::string& path) : handle_(dlopen((ZN_SMALL_HOSTS "/" + path).c_str(), RTLD_NOW)) {
        EXPECT_NE(handle_, nullptr) << dlerror();
    }
    ~Module() { dlclose(handle_); }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    int timesAsked() const { return *static_cast<int*>(dlsym(handle_, "smallHostAsked")); }
    std::string message() const { return *static_cast<const char**>(dlsym(handle_, "smallHostMessage")); }

private:
    void* handle_;
};

TEST(HostBinding, FailsWithoutAHostInTheProcess) {
    PluginUnderTest plugin;
    EXPECT_FALSE(plugin.initPlugin());
    EXPECT_FALSE(bindHostApi());
    EXPECT_FALSE(bindHostMatrixProducts());
}

TEST(HostBinding, TakesNoModuleWhoseNameOnlyBeginsLikeTheHosts) {
    const Module other("other/TesmiraZNViewer");
    EXPECT_FALSE(bindHostApi());
}

TEST(HostBinding, FindsEitherNameWithOrWithoutTheExecutableSuffix) {
    for (const char* path :
         {"first/Tesmira", "first_exe/Tesmira.exe", "second/TesmiraZN", "second_exe/TesmiraZN.exe"}) {
        const Module module(path);
        PluginUnderTest plugin;
        EXPECT_TRUE(plugin.initPlugin()) << path;
        EXPECT_EQ(module.timesAsked(), 1) << path;
    }
}

TEST(HostBinding, PrefersTesmiraWhenBothHostsAreLoaded) {
    const Module second("second/TesmiraZN");
    const Module first("first/Tesmira");
    PluginUnderTest plugin;
    EXPECT_TRUE(plugin.initPlugin());
    EXPECT_EQ(first.timesAsked(), 1);
    EXPECT_EQ(second.timesAsked(), 0);
}

TEST(HostBinding, FailsWithoutTheVersionFunction) {
    const Module module("no_version/Tesmira");
    PluginUnderTest plugin;
    EXPECT_FALSE(plugin.initPlugin());
    EXPECT_FALSE(bindHostApi());
}

// The preferred module decides, even when the other one could have served.
TEST(HostBinding, DoesNotFallBackToTesmiraZNWhenTesmiraLacksTheVersionFunction) {
    const Module first("no_version/Tesmira");
    const Module second("second/TesmiraZN");
    EXPECT_FALSE(bindHostApi());
}

TEST(HostBinding, SucceedsWithoutAPlotFunctionAndLeavesItNull) {
    const Module module("no_bars/Tesmira");
    EXPECT_TRUE(bindHostApi());
    EXPECT_EQ(host().znPlotBars, nullptr);
    EXPECT_NE(host().znLogText, nullptr);
}

TEST(HostBinding, OfTheProductsFailsWhenOnlyTheLastOneIsMissing) {
    const Module module("no_vector_product/Tesmira");
    EXPECT_TRUE(bindHostApi());
    EXPECT_FALSE(bindHostMatrixProducts());
    EXPECT_NE(products().zn_intel_matrix_matrix_mult_d, nullptr);
}

TEST(HostBinding, TellsTheUserThatTheProductsAreMissing) {
    const Module module("no_vector_product/Tesmira");
    PluginUnderTest plugin;
    EXPECT_FALSE(plugin.initPlugin());
    EXPECT_EQ(module.message(), "Can not execute this plugin - no access to MKL provided.");
}

} // namespace
} // namespace zn::testing
