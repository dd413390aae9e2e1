#pragma once

#include "host/plugin_under_test.h"
#include "host/scratch_directory.h"
#include "host/scripted_host.h"
#include "host/simulated_vtc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

/// A fresh scripted host with a small simulated VTC (8 x 6 x 5 voxels, 12 volumes, 3 sources), an empty current
/// directory, and the plug-in.
class HostFixture : public testing::Test {
protected:
    HostFixture() {
        host = ScriptedHost{};
        sources = giveSimulatedVtc(host, 8, 6, 5, 12, 3);
    }

    /// Initialises the plug-in, forgets the calls recorded so far, and runs it.
    bool run() {
        EXPECT_TRUE(plugin.initPlugin());
        host.calls.clear();
        return plugin.execute();
    }

    ScriptedHost& host = scripted();
    SimulatedSources sources;
    ScratchDirectory directory;
    PluginUnderTest plugin;
};

} // namespace zn::test
